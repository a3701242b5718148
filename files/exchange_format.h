// The text exchange file: lines that end in LF when written, in LF or CR LF when read. The first is the magic and at once the
// version. Every other line is a record, told by its key and made of fields with commas between them:
//
//   LY,code[,"layerName"],layIndex,layType,color,lineType,lineSize,pgnType,pntType,dspFlg,outLine,fillMode,actFlg,spareFlg,
//      editFlg,subLayCnt,"imgfname","imgactfname",imgMode,bmWidth,bmHeight,imgMinScl,imgMaxScl
//   SL[,"layerName"],subLayNo,layType,color,lineType,lineSize,pgnType,pntType,dspFlg,outLine,fillMode,spare
//      [,"imgfname","imgactfname",imgMode,bmWidth,bmHeight,imgMinScl,imgMaxScl]       one for each sub layer, behind its LY
//   GH,code,blkState,meshNo,blkFlg,inView,GX,GY,minX,minY,maxX,maxY,datCnt,"path"     a block, behind its LY and SL
//   IH,datID,lineTag,subLayNo,pntCnt                                                  an item of the block before it
//   P,x,y,z                                                                           a point of the item before it
//   T,x,y,z,"text","fntname",size,style,fill,pos,angle,uline,strike,fcolor,bcolor     its text, behind the points
//
// What stands in brackets is in version 1.01 and not in 1.00. A layer's LY and SL stand again before each of its blocks. Whole
// numbers are signed and of 32 bits, colours too. Other numbers have six decimals. The spare field of SL holds nothing and is 0.
//
// Strings are bytes of code page 932 in quotes. Nothing in them is escaped, so a comma or a line feed inside does not come back,
// nor does what stands behind such a line feed.
#pragma once

#include <string_view>

namespace orvane {

inline constexpr std::string_view kExchangeMagic = "ORVFH";
/// Without the names of layers and sub layers and the images of sub layers.
inline constexpr std::string_view kExchangeVersionPlain = "1.00";
inline constexpr std::string_view kExchangeVersionNamed = "1.01";

inline constexpr std::string_view kLayerKey = "LY";
inline constexpr std::string_view kSubLayerKey = "SL";
inline constexpr std::string_view kBlockKey = "GH";
inline constexpr std::string_view kItemKey = "IH";
inline constexpr std::string_view kPointKey = "P";
inline constexpr std::string_view kTextKey = "T";

}  // namespace orvane
