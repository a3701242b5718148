// Writing the data as text. A line begins with its key:
//
//   DH,code,meshNo,datID,top,left,bottom,right,pntCnt,lineTag,[mesh flag,]string flag[,0]     an item; the y values come first
//   P,x,y,z                          pntCnt lines; a z of 0 is "0.0"
//   MH,hcnt,vcnt,0                   where the mesh flag is set, with pntCnt lines M1,use flag and then pntCnt lines M2,colour
//   SH,x,y,z,size,style,fill,pos,uline,strike,angle,fcolor,bcolor                 where the string flag is set, with the lines
//   FN,font name and S,text          as they stand
//
// What is in [] is of version 1.10. Colours are signed numbers.
#include <charconv>

#include "files/archive_parts.h"
#include "files/archive_save_walk.h"

namespace orvane {
namespace {

/// One line of fields. Numbers look the same in every locale.
class TextLine {
public:
    explicit TextLine(std::string_view key) { Append(key); }

    TextLine& Int(std::int32_t value) {
        Append(",");
        size_ = static_cast<std::size_t>(std::to_chars(bytes_ + size_, bytes_ + sizeof bytes_, value).ptr - bytes_);
        return *this;
    }
    TextLine& Real(double value) {
        Append(",");
        const auto written = std::to_chars(bytes_ + size_, bytes_ + sizeof bytes_, value, std::chars_format::fixed, 6);
        size_ = static_cast<std::size_t>(written.ptr - bytes_);
        return *this;
    }
    void Append(std::string_view text) {
        const std::size_t taken = text.copy(bytes_ + size_, sizeof bytes_ - size_);
        size_ += taken;
    }
    std::string_view End() {
        Append("\r\n");
        return {bytes_, size_};
    }

private:
    // Four doubles of up to 317 characters and eight integers are the longest line.
    char bytes_[2048];
    std::size_t size_ = 0;
};

class TextWriter {
public:
    TextWriter(PackedSink& sink, ArcVersion version) : sink_(sink), version_(version) {}

    void Begin() {
        sink_.Write(kTextTitle);
        sink_.Write(VersionText(version_));
        sink_.Write("\r\n");
    }

    /// Text has no index.
    void WriteBlock(const DigBlock&, std::int32_t) {}

    void WriteItem(const DigBlock& block, const DigDat& dat) {
        WriteHead(block, dat);
        const std::size_t count = dat.pntCnt > 0 ? static_cast<std::size_t>(dat.pntCnt) : 0;
        for (std::size_t i = 0; i < count; ++i) WritePoint(dat.pnts[i]);
        if (version_ == ArcVersion::V110 && dat.meshAttr != nullptr) WriteMesh(*dat.meshAttr, count);
        if (dat.str != nullptr) WriteStr(*dat.str);
    }

private:
    void WriteHead(const DigBlock& block, const DigDat& dat) {
        sink_.Write("DH,");
        WriteRaw(block.code.View());
        TextLine line("");
        line.Int(block.meshNo).Int(dat.datID);
        line.Int(dat.rect.top).Int(dat.rect.left).Int(dat.rect.bottom).Int(dat.rect.right);
        line.Int(dat.pntCnt).Int(LowByte(dat.lineTag));
        if (version_ == ArcVersion::V110) line.Int(dat.meshAttr != nullptr ? 1 : 0);
        line.Int(dat.str != nullptr ? 1 : 0);
        if (version_ == ArcVersion::V110) line.Int(0);
        sink_.Write(line.End());
    }

    void WritePoint(const DigPnt& pnt) {
        TextLine line("P");
        line.Real(pnt.x).Real(pnt.y);
        if (pnt.z == 0) {
            line.Append(",0.0");
        } else {
            line.Real(pnt.z);
        }
        sink_.Write(line.End());
    }

    void WriteMesh(const DigMeshAttr& mesh, std::size_t count) {
        sink_.Write(TextLine("MH").Int(mesh.hcnt).Int(mesh.vcnt).Int(0).End());
        const std::size_t held = HeldEntries(mesh, count);
        for (std::size_t i = 0; i < count; ++i) sink_.Write(TextLine("M1").Int(i < held ? mesh.useFlag[i] : 0).End());
        for (std::size_t i = 0; i < count; ++i) {
            sink_.Write(TextLine("M2").Int(i < held ? static_cast<std::int32_t>(mesh.meshColor[i]) : 0).End());
        }
    }

    void WriteStr(const DigStr& str) {
        TextLine line("SH");
        line.Real(str.x).Real(str.y).Real(str.z).Int(LowByte(str.size)).Int(LowByte(str.style)).Int(str.fill);
        line.Int(LowByte(str.pos)).Int(str.uline).Int(str.strike).Real(str.angle);
        line.Int(static_cast<std::int32_t>(str.fcolor)).Int(static_cast<std::int32_t>(str.bcolor));
        sink_.Write(line.End());
        sink_.Write("FN,");
        WriteRaw(std::string_view(str.fntname).substr(0, kFontField - 1));
        sink_.Write("\r\nS,");
        WriteRaw(str.text);
        sink_.Write("\r\n");
    }

    /// A text of the store: a line feed in it becomes a line end, as in every text file of the system that the format comes from.
    void WriteRaw(std::string_view text) {
        for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
            sink_.Write(text.substr(0, end));
            sink_.Write("\r\n");
            text.remove_prefix(end + 1);
        }
        sink_.Write(text);
    }

    PackedSink& sink_;
    ArcVersion version_;
};

bool WriteText(const CDigMem& store, Files& files, std::string_view name, ArcVersion version, IdxTables& tables,
               ArcWatch& watch) {
    if (store.BlockCnt() == 0) return false;
    PackedSink sink(files.Create(name));
    if (!sink.Good()) return false;
    TextWriter writer(sink, version);
    const bool written = WriteItems(store, tables, watch, sink, writer);
    return sink.Close() && written;
}

}  // namespace

bool ArcWriteText100(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch) {
    return WriteText(store, files, name, ArcVersion::V100, tables, watch);
}

bool ArcWriteText110(const CDigMem& store, Files& files, std::string_view name, IdxTables& tables, ArcWatch& watch) {
    return WriteText(store, files, name, ArcVersion::V110, tables, watch);
}

}  // namespace orvane
