// The whole content of a store as text, so that two states can be compared and a difference can be read.
#pragma once

#include <cstdint>
#include <ostream>
#include <sstream>
#include <string>

#include "store/cdigmem.h"
#include "store/mesh_size.h"

namespace orvane {

inline std::ostream& operator<<(std::ostream& out, const Rect& r) {
    return out << '(' << r.left << ' ' << r.top << ' ' << r.right << ' ' << r.bottom << ')';
}

inline void DumpImage(std::ostream& out, const ImageLook& look) {
    out << " image '" << look.imgfname.View() << "' '" << look.imgactfname.View() << "' " << look.bmWidth << ' ' << look.bmHeight
        << ' ' << look.imgMinScl << ' ' << look.imgMaxScl;
}

inline void DumpLayer(std::ostream& out, const LayerDef& layer) {
    out << "layer '" << layer.code.View() << "' '" << layer.layerName.View() << "' key " << layer.layIndex << " type "
        << layer.layType << " look " << layer.color << ' ' << layer.color2 << ' ' << layer.lineType << ' ' << layer.lineSize
        << ' ' << layer.pgnType << ' ' << layer.pntType << " flags " << +layer.dspFlg << +layer.outLine << +layer.actFlg
        << +layer.spareFlg << +layer.editFlg << +layer.fillMode << +layer.imgMode << ' ' << layer.imgPos;
    DumpImage(out, layer);
    out << " subs " << layer.subLayCnt << '/' << layer.subLayMax << '\n';
    for (const SubLayDef& sub : layer.subLays) {
        out << "  sub " << sub.subLayNo << " '" << sub.layerName.View() << "' type " << sub.layType << " look " << sub.color
            << ' ' << sub.color2 << ' ' << sub.lineType << ' ' << sub.lineSize << ' ' << sub.pgnType << ' ' << sub.pntType
            << " flags " << +sub.dspFlg << +sub.outLine << +sub.fillMode << +sub.imgMode << ' ' << sub.imgPos;
        DumpImage(out, sub);
        out << '\n';
    }
}

inline void DumpDat(std::ostream& out, const DigDat& dat) {
    out << "  item " << dat.datID << " tag " << dat.lineTag << " sub " << dat.subLayNo << " flags " << +dat.clipFlg
        << +dat.drawnFlg << +dat.active << " rect " << dat.rect << dat.orgRect << " points " << dat.pntCnt
        << (dat.pnts ? ":" : " null");
    for (std::int32_t i = 0; i < dat.pntCnt; ++i) {
        const DigPnt& pnt = dat.pnts[static_cast<std::size_t>(i)];
        out << " (" << pnt.x << ' ' << pnt.y << ' ' << pnt.z << ')';
    }
    out << " org " << dat.orgPntCnt << (dat.orgPnts ? ":" : " null");
    for (std::int32_t i = 0; i < dat.orgPntCnt; ++i) out << ' ' << dat.orgPnts[static_cast<std::size_t>(i)].x;
    if (dat.meshAttr != nullptr) {
        const DigMeshAttr& mesh = *dat.meshAttr;
        out << " mesh " << mesh.hcnt << 'x' << mesh.vcnt << ':';
        for (std::size_t i = 0; i < MeshSize(mesh); ++i) {
            out << ' ' << +mesh.useFlag[i] << '/' << mesh.meshColor[i];
        }
    }
    if (dat.str != nullptr) {
        const DigStr& str = *dat.str;
        out << " text '" << str.text << "' font '" << str.fntname << "' " << str.size << " at " << str.x << ' ' << str.y << ' '
            << str.z << " org " << str.orgX << ' ' << str.orgY << ' ' << str.orgZ << " style " << str.style << ' ' << str.pos
            << ' ' << str.angle << " flags " << +str.fill << +str.uline << +str.strike << " colors " << str.fcolor << ' '
            << str.bcolor;
    }
    out << '\n';
}

inline void DumpBlock(std::ostream& out, const DigBlock& block) {
    out << "block " << block.blkState << " '" << block.path << "' '" << block.code.View() << "' " << block.meshNo << " flags "
        << +block.blkFlg << +block.inView << " origin " << block.GX << ' ' << block.GY << " bounds " << block.minX << ' '
        << block.minY << ' ' << block.maxX << ' ' << block.maxY << " items " << block.datCnt << '/' << block.datMax << '\n';
    for (const DigDat& dat : block.dats) DumpDat(out, dat);
}

inline void DumpOrgDat(std::ostream& out, const OrgDat& dat) {
    out << "figure " << dat.ID << " type " << dat.type << " look " << dat.color << ' ' << dat.line << ' ' << +dat.fill
        << " active " << +dat.active << " points " << dat.pntCnt << ':';
    for (const DigPnt& pnt : dat.pnts) out << " (" << pnt.x << ' ' << pnt.y << ' ' << pnt.z << ')';
    out << " text '" << dat.strText << "' at " << dat.strX << ' ' << dat.strY << ' ' << dat.strZ << ' ' << dat.strSize << ' '
        << dat.strAngle << ' ' << dat.strColor << ' ' << dat.strFill << '\n';
}

inline std::string DumpStore(CDigMem& store) {
    std::ostringstream out;
    out.precision(17);
    for (std::int32_t i = 0; i < store.LayerCnt(); ++i) DumpLayer(out, store.Layer(i));
    for (std::int32_t i = 0; i < store.BlockCnt(); ++i) DumpBlock(out, store.Block(i));
    for (const OrgDat& dat : store.OrgDats()) DumpOrgDat(out, dat);
    out << "index " << store.GetDigIndexCnt() << ':';
    for (const DigIndex& entry : store.Index()) out << ' ' << entry.block << '/' << entry.layer;
    out << '\n';
    return out.str();
}

}  // namespace orvane
