// Who listens: connection points for the events and for changes of properties.
#pragma once

#include <span>
#include <vector>

#include "control/ctrl.h"
#include "hosts/ocx/part.h"

namespace orvane {

/// One connection point. It has an identity of its own and lives as long as the control.
class ConnectionPoint final : public IConnectionPoint {
public:
    ConnectionPoint(ControlObject& object, REFIID iid) : object_(object), iid_(iid) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;
    virtual ~ConnectionPoint() = default;

    const IID& Iid() const { return iid_; }
    /// Calls `tell(sink)` for each listener that is there now, as long as it still is when its turn comes.
    template <class Tell>
    void ForEach(Tell tell) {
        std::vector<Connection> now = connections_;
        for (const Connection& each : now) {
            if (IsConnected(each.cookie)) tell(*each.sink.Get());
        }
    }
    /// The list is empty before the first listener hears of it.
    void Clear() { const std::vector<Connection> gone = std::exchange(connections_, {}); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return OuterOf(object_).AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return OuterOf(object_).Release(); }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* out) override { return Give(out, iid_); }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** out) override;
    /// Listeners to events may have the event interface or plain IDispatch.
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** out) override;

private:
    struct Connection {
        DWORD cookie;
        Com<IUnknown> sink;  // the asked-for interface
    };
    bool IsConnected(DWORD cookie) const;

    ControlObject& object_;
    IID iid_;
    std::vector<Connection> connections_;
    DWORD lastCookie_ = 0;
};

class EventsPart final : public Part<IConnectionPointContainer, IProvideClassInfo2>, public ControlEvents {
public:
    explicit EventsPart(ControlObject& object);

    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** out) override;
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID iid, IConnectionPoint** out) override;
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** out) override;
    HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* out) override;

    /// An event of the control to every listener; an error that one answers changes nothing. None is told while events are
    /// frozen.
    void Fire(std::int32_t eventDispid, std::span<const Variant> args) override;
    /// Tells that a property has another value.
    void PropertyChanged(DISPID dispid);
    /// How many changes have been told so far, to anybody or nobody.
    unsigned long Notices() const { return notices_; }
    void Freeze(bool on) { frozen_ += on ? 1 : (frozen_ > 0 ? -1 : 0); }
    void DropListeners();
    ConnectionPoint& Events() { return events_; }
    ConnectionPoint& Changes() { return changes_; }

private:
    ConnectionPoint events_;
    ConnectionPoint changes_;
    long frozen_ = 0;
    unsigned long notices_ = 0;
};

}  // namespace orvane
