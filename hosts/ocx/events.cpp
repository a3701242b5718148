#include "hosts/ocx/events.h"

#include <algorithm>

#include "control/automation/table.h"
#include "control/input_constants.h"
#include "hosts/ocx/control_object.h"
#include "hosts/ocx/enumerator.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/module.h"
#include "hosts/ocx/values.h"

namespace orvane {

namespace {

constexpr GUID kIidEvents = ToGuid(kEventsGuid);
constexpr GUID kClassControl = ToGuid(kControlGuid);

struct ConnectionRules {
    static REFIID Iid() { return IID_IEnumConnections; }
    static bool Copy(const CONNECTDATA& from, CONNECTDATA& to) {
        to = from;
        to.pUnk->AddRef();
        return true;
    }
    static void Free(CONNECTDATA& item) { item.pUnk->Release(); }
};
struct PointRules : CountedItems<IConnectionPoint> {
    static REFIID Iid() { return IID_IEnumConnectionPoints; }
};

/// The arguments of an event as a host takes them: from last to first, each of its declared type.
class EventParams {
public:
    EventParams(const Member& event, std::span<const Variant> args) : values_(args.size()) {
        for (std::size_t i = 0; i < args.size(); ++i) {
            VARIANT& value = values_[args.size() - 1 - i];
            VariantInit(&value);
            if (!ToVariant(args[i], value)) VariantClear(&value);
            const bool narrow = i < event.args.size() && event.args[i].type.kind == ValueKind::I2;
            if (narrow) VariantChangeType(&value, &value, 0, VT_I2);
        }
        params_.rgvarg = values_.data();
        params_.cArgs = static_cast<UINT>(values_.size());
    }
    EventParams(const EventParams&) = delete;
    EventParams& operator=(const EventParams&) = delete;
    ~EventParams() {
        for (VARIANT& value : values_) VariantClear(&value);
    }
    DISPPARAMS* Get() { return &params_; }

private:
    std::vector<VARIANT> values_;
    DISPPARAMS params_{};
};

}  // namespace

HRESULT ConnectionPoint::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = iid == IID_IUnknown || iid == IID_IConnectionPoint ? this : nullptr;
    if (*out == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** out) {
    return GiveInterface(out, static_cast<IConnectionPointContainer*>(&object_.events));
}

HRESULT ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    const Com<IUnknown> keep(&object_.Outer());
    return Guarded([&] {
        Com<IUnknown> asked = Query<IUnknown>(sink, iid_);
        if (!asked && iid_ == kIidEvents) asked = Query<IUnknown>(sink, IID_IDispatch);
        if (!asked) return CONNECT_E_CANNOTCONNECT;
        connections_.push_back({++lastCookie_, asked});
        *cookie = lastCookie_;
        return S_OK;
    });
}

HRESULT ConnectionPoint::Unadvise(DWORD cookie) {
    const Com<IUnknown> keep(&object_.Outer());
    const auto found =
        std::find_if(connections_.begin(), connections_.end(), [&](const Connection& each) { return each.cookie == cookie; });
    if (found == connections_.end()) return CONNECT_E_NOCONNECTION;
    const Com<IUnknown> last = found->sink;  // its end may run code that looks here
    connections_.erase(found);
    return S_OK;
}

HRESULT ConnectionPoint::EnumConnections(IEnumConnections** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Guarded([&] {
        std::vector<CONNECTDATA> items;
        items.reserve(connections_.size());
        for (const Connection& each : connections_) {
            each.sink.Get()->AddRef();
            items.push_back({each.sink.Get(), each.cookie});
        }
        *out = new Enumerator<IEnumConnections, CONNECTDATA, ConnectionRules>(std::move(items));
        return S_OK;
    });
}

bool ConnectionPoint::IsConnected(DWORD cookie) const {
    return std::any_of(connections_.begin(), connections_.end(), [&](const Connection& each) { return each.cookie == cookie; });
}

EventsPart::EventsPart(ControlObject& object)
    : Part(object), events_(object, kIidEvents), changes_(object, IID_IPropertyNotifySink) {}

HRESULT EventsPart::EnumConnectionPoints(IEnumConnectionPoints** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return Guarded([&] {
        std::vector<IConnectionPoint*> points{&events_, &changes_};
        for (IConnectionPoint* point : points) point->AddRef();
        *out = new Enumerator<IEnumConnectionPoints, IConnectionPoint*, PointRules>(std::move(points));
        return S_OK;
    });
}

HRESULT EventsPart::FindConnectionPoint(REFIID iid, IConnectionPoint** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    for (ConnectionPoint* point : {&events_, &changes_}) {
        if (point->Iid() == iid) return GiveInterface(out, point);
    }
    return CONNECT_E_NOCONNECTION;
}

HRESULT EventsPart::GetClassInfo(ITypeInfo** out) { return out == nullptr ? E_POINTER : LoadTypeInfo(kClassControl, out); }

HRESULT EventsPart::GetGUID(DWORD kind, GUID* out) {
    if (out == nullptr) return E_POINTER;
    *out = kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? kIidEvents : GUID{};
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

void EventsPart::Fire(std::int32_t eventDispid, std::span<const Variant> args) {
    const Com<IUnknown> keep(&object_.Outer());
    Guarded([&] {
        if (eventDispid == kOnZoomChange) PropertyChanged(Surface().Find("Zoom")->dispid);
        const Member* event = Surface().FindEvent(eventDispid);
        if (event == nullptr || frozen_ > 0) return S_OK;
        EventParams params(*event, args);
        events_.ForEach([&](IUnknown& sink) {
            // Asked for as the event interface or as IDispatch, which begin alike.
            auto& listener = static_cast<IDispatch&>(sink);
            VARIANT ignored;
            VariantInit(&ignored);
            EXCEPINFO exception{};
            listener.Invoke(event->dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, params.Get(), &ignored, &exception,
                            nullptr);
            VariantClear(&ignored);
            for (const BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile}) SysFreeString(text);
        });
        return S_OK;
    });
}

void EventsPart::PropertyChanged(DISPID dispid) {
    const Com<IUnknown> keep(&object_.Outer());
    ++notices_;
    Guarded([&] {
        changes_.ForEach([&](IUnknown& sink) { static_cast<IPropertyNotifySink&>(sink).OnChanged(dispid); });
        return S_OK;
    });
}

void EventsPart::DropListeners() {
    events_.Clear();
    changes_.Clear();
}

}  // namespace orvane
