// The layer file.
#include <algorithm>

#include "files/archive_parts.h"

namespace orvane {
namespace {

void ReadLook(FieldReader& fields, ArcVersion version, LayerDef& layer) {
    layer.layerName.Set(fields.Text(kLayerNameField));
    fields.Get(layer.layIndex);
    fields.Get(layer.layType);
    fields.Get(layer.color);
    if (version == ArcVersion::V110) fields.Get(layer.color2);
    fields.Get(layer.lineType);
    fields.Get(layer.lineSize);
    fields.Get(layer.pgnType);
    fields.Get(layer.pntType);
    layer.dspFlg = fields.Flag();
    layer.outLine = fields.Flag();
    layer.spareFlg = fields.Flag();
    layer.fillMode = fields.Flag();
    layer.imgMode = fields.Flag();
    if (version == ArcVersion::V110) fields.Get(layer.imgPos);
    layer.imgfname.Set(fields.Text(kPathField));
    layer.imgactfname.Set(fields.Text(kPathField));
    fields.Get(layer.bmWidth);
    fields.Get(layer.bmHeight);
    fields.Get(layer.imgMinScl);
    fields.Get(layer.imgMaxScl);
}

/// What is not in the record stays as in an unused one: not active, not to be edited, without sub layers.
bool ReadLayers(CDigMem& store, Files& files, std::string_view name, ArcVersion version) {
    const std::unique_ptr<InputFile> file = files.OpenRead(name);
    if (file == nullptr || !HasTitle(*file, kLayerTitle)) return false;
    PackedSource source(*file);
    if (source.Size_bytes() < kHeaderSize) return false;
    source.Seek(kHeaderSize);
    const std::size_t size = LayerRecSize(version);
    for (std::uint64_t count = source.Remaining() / size; count > 0; --count) {
        const unsigned char* record = source.Take(size);
        if (record == nullptr) return false;
        FieldReader fields(record);
        LayerDef layer;
        layer.code.Set(fields.Text(kCodeField));
        if (store.FindLayDef(layer.code.View()) >= 0) continue;
        ReadLook(fields, version, layer);
        if (!store.AppendReadLayer(std::move(layer))) return false;
    }
    return true;
}

void WriteLayer(PackedSink& sink, const LayerDef& layer, ArcVersion version) {
    FieldWriter<LayerRecSize(ArcVersion::V110)> record;
    record.Text(layer.code.View(), kCodeField);
    record.Text(layer.layerName.View(), kLayerNameField);
    record.Put(layer.layIndex);
    record.Put(layer.layType);
    record.Put(layer.color);
    if (version == ArcVersion::V110) record.Put(layer.color2);
    record.Put(layer.lineType);
    record.Put(layer.lineSize);
    record.Put(layer.pgnType);
    record.Put(layer.pntType);
    record.Put(layer.dspFlg);
    record.Put(layer.outLine);
    record.Put(layer.spareFlg);
    record.Put(layer.fillMode);
    record.Put(layer.imgMode);
    if (version == ArcVersion::V110) record.Put(layer.imgPos);
    record.Text(layer.imgfname.View(), kPathField);
    record.Text(layer.imgactfname.View(), kPathField);
    record.Put(layer.bmWidth);
    record.Put(layer.bmHeight);
    record.Put(layer.imgMinScl);
    record.Put(layer.imgMaxScl);
    if (version == ArcVersion::V110) record.Skip(16);
    sink.Write(record);
}

}  // namespace

bool ArcReadLayers100(CDigMem& store, Files& files, std::string_view name) {
    return ReadLayers(store, files, name, ArcVersion::V100);
}

bool ArcReadLayers110(CDigMem& store, Files& files, std::string_view name) {
    return ReadLayers(store, files, name, ArcVersion::V110);
}

bool ArcWriteLayers(const CDigMem& store, Files& files, std::string_view name, ArcVersion version,
                    std::span<const std::string> leaveOut) {
    if (store.LayerCnt() == 0) return false;
    PackedSink sink(files.Create(name));
    if (!sink.Good()) return false;
    WriteHeader(sink, kLayerTitle, version);
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) {
        const LayerDef& layer = store.Layer(i);
        if (std::find(leaveOut.begin(), leaveOut.end(), layer.code.View()) == leaveOut.end()) WriteLayer(sink, layer, version);
    }
    return sink.Close();
}

}  // namespace orvane
