#include "hosts/ocx/raster_object.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include "hosts/ocx/com_base.h"
#include "hosts/ocx/wide_text.h"
#include "platform/win32/win32_context.h"

namespace orvane {

namespace {

constexpr DISPID Id(unsigned number) { return static_cast<DISPID>(number); }
constexpr DISPID kIsReady = Id(0x60030002);
constexpr DISPID kInit = Id(0x60030003);
constexpr DISPID kLoad = Id(0x60030004);
constexpr DISPID kClose = Id(0x60030005);
constexpr DISPID kDraw = Id(0x60030007);
constexpr DISPID kRotate = Id(0x60030009);
constexpr DISPID kSetCP1 = Id(0x6003000A);
constexpr DISPID kSetCP2 = Id(0x6003000B);
constexpr DISPID kCalcCorrect2 = Id(0x6003000E);
constexpr DISPID kImgHeight = Id(0x68030000);
constexpr DISPID kImgWidth = Id(0x68030001);

VARIANT Long(std::int32_t v) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I4;
    value.lVal = v;
    return value;
}
VARIANT Short(std::int16_t v) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_I2;
    value.iVal = v;
    return value;
}
VARIANT Double(double v) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_R8;
    value.dblVal = v;
    return value;
}

class RasterObject final : public RasterServer {
public:
    explicit RasterObject(Com<IDispatch> server) : server_(std::move(server)) {}

    bool SrvIsReady() override { return Ask(kIsReady, {}); }
    bool SrvInit() override { return Ask(kInit, {}); }
    bool SrvLoad(std::string_view filename) override {
        VARIANT name;
        VariantInit(&name);
        name.bstrVal = ToBstr(filename);
        if (name.bstrVal == nullptr) return false;
        name.vt = VT_BSTR;
        const bool done = Ask(kLoad, {name});
        VariantClear(&name);
        return done;
    }
    bool SrvClose() override { return Ask(kClose, {}); }
    bool SrvDraw(DeviceContext& dc, const RasterPart& part, std::int16_t mode) override {
        return Ask(kDraw, {Long(HandleOf(dc)), Double(part.X1), Double(part.Y1), Double(part.X2), Double(part.Y2),
                           Long(part.pixels.left), Long(part.pixels.top), Long(part.pixels.right), Long(part.pixels.bottom),
                           Double(part.PendX), Double(part.PendY), Short(mode)});
    }
    bool SrvRotate(double angle_deg) override { return Ask(kRotate, {Double(angle_deg)}); }
    bool SrvSetCP1(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override {
        return Ask(kSetCP1, {Long(bmpX), Long(bmpY), Double(GeoX), Double(GeoY)});
    }
    bool SrvSetCP2(std::int32_t bmpX, std::int32_t bmpY, double GeoX, double GeoY) override {
        return Ask(kSetCP2, {Long(bmpX), Long(bmpY), Double(GeoX), Double(GeoY)});
    }
    bool SrvCalcCorrect2() override { return Ask(kCalcCorrect2, {}); }
    std::int32_t SrvImgWidth() override { return Read(kImgWidth); }
    std::int32_t SrvImgHeight() override { return Read(kImgHeight); }

private:
    /// One call; the answer converted to `type`. False when the server fails or answers nothing of that type. Texts among the
    /// arguments stay the caller's.
    bool Call(DISPID dispid, WORD flags, std::initializer_list<VARIANT> args, VARTYPE type, VARIANT& answer) {
        VariantInit(&answer);
        std::vector<VARIANT> params(args);
        std::reverse(params.begin(), params.end());
        DISPPARAMS passed{params.data(), nullptr, static_cast<UINT>(params.size()), 0};
        const Com<IDispatch> server = server_;  // the call may end this object
        EXCEPINFO exception{};
        const HRESULT called =
            server->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, flags, &passed, &answer, &exception, nullptr);
        for (const BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) SysFreeString(text);
        if (SUCCEEDED(called) && SUCCEEDED(VariantChangeType(&answer, &answer, 0, type))) return true;
        VariantClear(&answer);
        return false;
    }
    /// A server answers 1 or -1 for true.
    bool Ask(DISPID dispid, std::initializer_list<VARIANT> args) {
        VARIANT answer;
        return Call(dispid, DISPATCH_METHOD, args, VT_BOOL, answer) && answer.boolVal != VARIANT_FALSE;
    }
    std::int32_t Read(DISPID dispid) {
        VARIANT answer;
        return Call(dispid, DISPATCH_PROPERTYGET, {}, VT_I4, answer) ? static_cast<std::int32_t>(answer.lVal) : 0;
    }

    Com<IDispatch> server_;
};

}  // namespace

std::unique_ptr<RasterServer> MakeRasterObject() {
    CLSID clsid{};
    if (FAILED(CLSIDFromProgID(kRasterProgId, &clsid))) return nullptr;
    void* made = nullptr;
    if (FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch, &made)))
        return nullptr;
    Com<IDispatch> server;
    *server.Out() = static_cast<IDispatch*>(made);
    return std::make_unique<RasterObject>(std::move(server));
}

}  // namespace orvane
