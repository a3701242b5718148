// What a form keeps of the control: the scale and the size, in a property bag, a stream or a storage. Everything else comes from
// the host's own calls at run time.
#pragma once

#include "control/ctrl.h"
#include "hosts/ocx/part.h"

namespace orvane {

class PersistPart final : public Part<IPersistStreamInit, IPersistStorage, IPersistPropertyBag> {
public:
    using Part::Part;

    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* out) override;
    HRESULT STDMETHODCALLTYPE IsDirty() override;
    /// Starts with the defaults.
    HRESULT STDMETHODCALLTYPE InitNew() override;

    // Stream: four numbers of 32 bits, low byte first: version 0x00010000, width and height in hundredths of a millimetre, scale.
    // A stream that is too short or of another version is refused, and nothing is loaded.
    HRESULT STDMETHODCALLTYPE Load(IStream* stream) override;
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) override;
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* bytes) override;

    // Storage: the same in a stream of its own.
    HRESULT STDMETHODCALLTYPE InitNew(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Load(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE Save(IStorage* storage, BOOL sameAsLoad) override;
    /// Ends a save, or the time without a storage; E_UNEXPECTED where neither has begun. Only a save into the storage at hand, or
    /// into one that becomes it, leaves the control unchanged.
    HRESULT STDMETHODCALLTYPE SaveCompleted(IStorage* storage) override;
    HRESULT STDMETHODCALLTYPE HandsOffStorage() override;

    // Property bag: "_Version", "_ExtentX", "_ExtentY" and "Zoom". What the bag does not have loads as its default.
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

private:
    /// The one exchange of all ways: size and map.
    void Exchange(PropertyExchange& exchange);
    HRESULT Write(IStream& stream);
    /// A save is complete; `unchanged` where nothing is left to be saved after it, and then whoever asked hears of it. Returns
    /// S_OK.
    HRESULT Saved(bool unchanged);

    bool saving_ = false;      // a save, or a time without a storage, has not been ended yet
    bool saved_ = false;       // a storage was written by it
    bool sameAsLoad_ = false;  // it was the one at hand
};

}  // namespace orvane
