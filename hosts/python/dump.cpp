#include "hosts/python/dump.h"

namespace orvane::python {

namespace {

namespace py = pybind11;

template <std::size_t N>
py::bytes Text(const FixedText<N>& text) {
    return py::bytes(std::string(text.View()));
}

py::tuple Sides(const Rect& r) { return py::make_tuple(r.left, r.top, r.right, r.bottom); }

void PutImage(py::dict& d, const ImageLook& look) {
    d["imgfname"] = Text(look.imgfname);
    d["imgactfname"] = Text(look.imgactfname);
    d["bmWidth"] = look.bmWidth;
    d["bmHeight"] = look.bmHeight;
    d["imgMinScl"] = look.imgMinScl;
    d["imgMaxScl"] = look.imgMaxScl;
}

/// The fields that a layer and a sub layer have under one name.
template <class Record>
void PutLook(py::dict& d, const Record& r) {
    d["layerName"] = Text(r.layerName);
    d["layType"] = r.layType;
    d["color"] = r.color;
    d["color2"] = r.color2;
    d["lineType"] = r.lineType;
    d["lineSize"] = r.lineSize;
    d["pgnType"] = r.pgnType;
    d["pntType"] = r.pntType;
    d["dspFlg"] = r.dspFlg;
    d["outLine"] = r.outLine;
    d["fillMode"] = r.fillMode;
    d["imgMode"] = r.imgMode;
    d["imgPos"] = r.imgPos;
    PutImage(d, r);
}

py::dict LayerDict(const LayerDef& layer) {
    py::dict d;
    d["code"] = Text(layer.code);
    d["layIndex"] = layer.layIndex;
    PutLook(d, layer);
    d["actFlg"] = layer.actFlg;
    d["spareFlg"] = layer.spareFlg;
    d["editFlg"] = layer.editFlg;
    d["subLayCnt"] = layer.subLayCnt;
    d["subLayMax"] = layer.subLayMax;
    py::list subs;
    for (const SubLayDef& sub : layer.subLays) {
        py::dict s;
        s["subLayNo"] = sub.subLayNo;
        PutLook(s, sub);
        subs.append(s);
    }
    d["subLays"] = subs;
    return d;
}

py::list Points(const DigPnt* p, std::int32_t count) {
    py::list out;
    for (std::int32_t i = 0; p != nullptr && i < count; ++i) out.append(py::make_tuple(p[i].x, p[i].y, p[i].z));
    return out;
}

py::object MeshDict(const DigMeshAttr* mesh) {
    if (mesh == nullptr) return py::none();
    py::dict d;
    d["hcnt"] = mesh->hcnt;
    d["vcnt"] = mesh->vcnt;
    py::list flags;
    py::list colors;
    for (std::int32_t i = 0; i < mesh->arrayCnt; ++i) {
        if (mesh->useFlag.Get() != nullptr) flags.append(mesh->useFlag.Get()[i]);
        if (mesh->meshColor.Get() != nullptr) colors.append(mesh->meshColor.Get()[i]);
    }
    d["useFlag"] = flags;
    d["meshColor"] = colors;
    return d;
}

py::object StrDict(const DigStr* str) {
    if (str == nullptr) return py::none();
    py::dict d;
    d["x"] = str->x;
    d["y"] = str->y;
    d["z"] = str->z;
    d["text"] = py::bytes(str->text);
    d["fntname"] = py::bytes(str->fntname);
    d["size"] = str->size;
    d["style"] = str->style;
    d["fill"] = str->fill;
    d["pos"] = str->pos;
    d["angle"] = str->angle;
    d["uline"] = str->uline;
    d["strike"] = str->strike;
    d["fcolor"] = str->fcolor;
    d["bcolor"] = str->bcolor;
    return d;
}

py::dict DatDict(const DigDat& dat) {
    py::dict d;
    d["datID"] = dat.datID;
    d["lineTag"] = dat.lineTag;
    d["subLayNo"] = dat.subLayNo;
    d["pntCnt"] = dat.pntCnt;
    d["clipFlg"] = dat.clipFlg;
    d["drawnFlg"] = dat.drawnFlg;
    d["active"] = dat.active;
    d["rect"] = Sides(dat.rect);
    d["orgRect"] = Sides(dat.orgRect);
    d["pnts"] = Points(dat.pnts.Get(), dat.pntCnt);
    d["orgPnts"] = dat.orgPnts.Get() == nullptr ? py::object(py::none()) : py::object(Points(dat.orgPnts.Get(), dat.orgPntCnt));
    d["meshAttr"] = MeshDict(dat.meshAttr.get());
    d["str"] = StrDict(dat.str.get());
    return d;
}

py::dict BlockDict(const DigBlock& block) {
    py::dict d;
    d["blkState"] = block.blkState;
    d["path"] = py::bytes(block.path);
    d["code"] = Text(block.code);
    d["meshNo"] = block.meshNo;
    d["blkFlg"] = block.blkFlg;
    d["inView"] = block.inView;
    d["GX"] = block.GX;
    d["GY"] = block.GY;
    d["minX"] = block.minX;
    d["minY"] = block.minY;
    d["maxX"] = block.maxX;
    d["maxY"] = block.maxY;
    d["orgGX"] = block.orgGX;
    d["orgGY"] = block.orgGY;
    d["orgMinX"] = block.orgMinX;
    d["orgMinY"] = block.orgMinY;
    d["orgMaxX"] = block.orgMaxX;
    d["orgMaxY"] = block.orgMaxY;
    d["datCnt"] = block.datCnt;
    d["recCnt"] = block.recCnt;
    d["datMax"] = block.datMax;
    py::list dats;
    for (const DigDat& dat : block.dats) dats.append(DatDict(dat));
    d["dats"] = block.datMax == 0 ? py::object(py::none()) : py::object(dats);
    return d;
}

py::list Ints(const GrowArray<std::int32_t>& values) {
    py::list out;
    for (const std::int32_t value : values) out.append(value);
    return out;
}

py::dict OrgDict(const OrgDat& figure) {
    py::dict d;
    d["ID"] = figure.ID;
    d["type"] = figure.type;
    d["fill"] = figure.fill;
    d["color"] = figure.color;
    d["line"] = figure.line;
    d["pntCnt"] = figure.pntCnt;
    d["active"] = figure.active;
    py::list pnts;
    for (const DigPnt& pnt : figure.pnts) pnts.append(py::make_tuple(pnt.x, pnt.y));
    d["pnts"] = pnts;
    d["strX"] = figure.strX;
    d["strY"] = figure.strY;
    d["strZ"] = figure.strZ;
    d["strText"] = figure.strText.empty() ? py::object(py::none()) : py::object(py::bytes(figure.strText));
    d["strSize"] = figure.strSize;
    d["strFill"] = figure.strFill;
    d["strAngle"] = figure.strAngle;
    d["strColor"] = figure.strColor;
    return d;
}

py::dict SymbolDict(const SymbolDef& symbol) {
    py::dict d;
    d["symNo"] = symbol.symNo;
    d["strokeCnt"] = symbol.strokeCnt;
    py::list from;
    py::list to;
    for (std::int32_t i = 0; i < symbol.strokeCnt; ++i) {
        from.append(py::make_tuple(symbol.strokeFrom.Get()[i].x, symbol.strokeFrom.Get()[i].y));
        to.append(py::make_tuple(symbol.strokeTo.Get()[i].x, symbol.strokeTo.Get()[i].y));
    }
    d["strokeFrom"] = from;
    d["strokeTo"] = to;
    return d;
}

py::dict LineTypeDict(const LineTypeDef& def) {
    py::dict d;
    d["ltKind"] = def.ltKind;
    d["ltId"] = def.ltId;
    d["ltName"] = Text(def.ltName);
    d["ltCnt"] = def.ltCnt;
    d["ltList"] = Ints(def.ltList);
    d["ltList2"] = Ints(def.ltList2);
    d["ltLen"] = def.ltLen;
    d["ltAngle"] = def.ltAngle;
    d["ltDir"] = def.ltDir;
    d["ltPos"] = def.ltPos;
    d["ltBase"] = def.ltBase;
    return d;
}

py::dict ViewDict(const COrvane4Ctrl& ctrl) {
    const ViewParams& view = ctrl.store.view;
    py::dict d;
    d["ViewX"] = ctrl.viewX;
    d["ViewY"] = ctrl.viewY;
    d["Zoom"] = view.Zoom;
    d["FrameMode"] = ctrl.frameMode;
    d["FrameZone"] = ctrl.frameZone;
    d["ScaleX"] = view.ScaleX;
    d["ScaleY"] = view.ScaleY;
    d["Rotate"] = view.Rotate;
    d["OffX"] = view.OffX;
    d["OffY"] = view.OffY;
    d["DevOffX"] = ctrl.devOffX;
    d["DevOffY"] = ctrl.devOffY;
    d["DotPerM"] = ctrl.dotPerM;
    d["ScreenDpi"] = view.ScreenDpi;
    d["DeviceDpi"] = view.DeviceDpi;
    d["DpiRatio"] = view.DpiRatio;
    d["AreaLeft"] = ctrl.areaLeft;
    d["AreaRight"] = ctrl.areaRight;
    d["AreaTop"] = ctrl.areaTop;
    d["AreaBottom"] = ctrl.areaBottom;
    d["PendX"] = ctrl.pendX;
    d["PendY"] = ctrl.pendY;
    d["DrawArea"] = Sides(ctrl.drawArea);
    d["DrawState"] = ctrl.CurrentDrawState();
    d["BufferState"] = ctrl.BufferState();
    d["RastOnTop"] = ctrl.rastOnTop;
    d["ScrollActive"] = ctrl.scrollActive ? 1 : 0;
    d["LastMouseX"] = ctrl.lastMouseX;
    d["LastMouseY"] = ctrl.lastMouseY;
    d["RectZoomMode"] = ctrl.rectZoomMode;
    d["WheelZoomMode"] = ctrl.wheelZoomMode;
    d["WheelRateUp"] = ctrl.wheelRateUp;
    d["WheelRateDown"] = ctrl.wheelRateDown;
    d["DataSelectMode"] = ctrl.dataSelectMode;
    d["OrgTopDrawID"] = ctrl.orgTopDrawID;
    d["OrgMoveID"] = ctrl.orgMoveID;
    d["OrgMoveIndex"] = ctrl.orgMoveIndex;
    d["OrgMoving"] = ctrl.orgMoving ? 1 : 0;
    d["OrgStrVisible"] = ctrl.orgStrVisible ? 1 : 0;
    d["MapDraw"] = ctrl.mapDraw ? 1 : 0;
    d["ScaleBarMode"] = ctrl.scaleBarMode;
    d["ExecRun"] = ctrl.execRun ? 1 : 0;
    d["DebugMode"] = ctrl.debugMode ? 1 : 0;
    d["RunMode"] = ctrl.runMode;
    d["ScrollMode"] = ctrl.scrollMode;
    return d;
}

}  // namespace

py::dict Dump(COrvane4Ctrl& ctrl) {
    CDigMem& store = ctrl.store;
    py::dict d;
    d["view"] = ViewDict(ctrl);
    d["initDone"] = store.InitDone() ? 1 : 0;
    d["ActiveColor"] = store.ActiveColor;
    d["ActivePointType"] = store.ActivePointType;
    d["LineTagMode"] = store.LineTagMode;
    d["DigStrVisible"] = store.DigStrVisible;
    d["CutSameString"] = store.CutSameString;
    d["bgColor"] = store.bgColor;
    py::list layers;
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) layers.append(LayerDict(store.Layer(i)));
    d["layers"] = layers;
    py::list index;
    if (store.InitDone()) {
        for (const DigIndex& entry : store.Index()) index.append(py::make_tuple(entry.block, entry.layer));
    }
    d["digIndex"] = index;
    d["blockCnt"] = store.BlockCnt();
    py::list blocks;
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) blocks.append(BlockDict(store.Block(i)));
    d["blocks"] = blocks;
    py::list figures;
    for (const OrgDat& figure : store.OrgDats()) figures.append(OrgDict(figure));
    d["orgDatCnt"] = store.OrgDatCnt();
    d["orgDats"] = figures;
    py::list symbols;
    for (const SymbolDef& symbol : store.symbols) symbols.append(SymbolDict(symbol));
    d["symbols"] = symbols;
    py::list lineTypes;
    for (const LineTypeDef& def : store.lineTypes) lineTypes.append(LineTypeDict(def));
    d["lineTypes"] = lineTypes;
    return d;
}

}  // namespace orvane::python
