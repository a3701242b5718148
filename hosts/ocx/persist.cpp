#include "hosts/ocx/persist.h"

#include <array>
#include <cstring>

#include "hosts/ocx/control_object.h"
#include "hosts/ocx/guids.h"
#include "hosts/ocx/wide_text.h"

namespace orvane {

namespace {

constexpr GUID kClassControl = ToGuid(kControlGuid);
constexpr std::uint32_t kVersion = 0x00010000;
constexpr std::size_t kNumberCnt = 4;
constexpr wchar_t kContents[] = L"CONTENTS";
using Record = std::array<unsigned char, kNumberCnt * 4>;

/// Every value as its default.
class Defaults final : public PropertyExchange {
public:
    void ExchangeVersion(std::uint32_t, bool) override {}
    void ExchangeLong(std::string_view, std::int32_t& value, std::int32_t defaultValue) override { value = defaultValue; }
};

/// Numbers one behind the other.
class RecordExchange final : public PropertyExchange {
public:
    RecordExchange(Record& record, bool loads) : record_(record), loads_(loads) {}
    void ExchangeVersion(std::uint32_t version, bool) override {
        auto number = static_cast<std::int32_t>(version);
        ExchangeLong("_Version", number, number);
    }
    void ExchangeLong(std::string_view, std::int32_t& value, std::int32_t) override {
        if (at_ + 4 > record_.size()) return;
        auto bits = static_cast<std::uint32_t>(value);
        if (loads_) bits = 0;
        for (unsigned i = 0; i < 4; ++i, ++at_) {
            if (loads_) {
                bits |= static_cast<std::uint32_t>(record_[at_]) << (8 * i);
            } else {
                record_[at_] = static_cast<unsigned char>(bits >> (8 * i));
            }
        }
        value = static_cast<std::int32_t>(bits);
    }

private:
    Record& record_;
    bool loads_;
    std::size_t at_ = 0;
};

class BagLoad final : public PropertyExchange {
public:
    BagLoad(IPropertyBag& bag, IErrorLog* log) : bag_(bag), log_(log) {}
    void ExchangeVersion(std::uint32_t, bool) override {}  // a bag tells its values by name, so that its version does not matter
    void ExchangeLong(std::string_view name, std::int32_t& value, std::int32_t defaultValue) override {
        VARIANT read;
        VariantInit(&read);
        read.vt = VT_I4;
        const bool found = SUCCEEDED(bag_.Read(WideAscii(name).c_str(), &read, log_)) &&
                           SUCCEEDED(VariantChangeTypeEx(&read, &read, LOCALE_INVARIANT, 0, VT_I4));
        value = found ? static_cast<std::int32_t>(read.lVal) : defaultValue;
        VariantClear(&read);
    }

private:
    IPropertyBag& bag_;
    IErrorLog* log_;
};

class BagSave final : public PropertyExchange {
public:
    BagSave(IPropertyBag& bag, bool saveAll) : bag_(bag), saveAll_(saveAll) {}
    void ExchangeVersion(std::uint32_t version, bool) override { Write("_Version", static_cast<std::int32_t>(version)); }
    void ExchangeLong(std::string_view name, std::int32_t& value, std::int32_t defaultValue) override {
        if (saveAll_ || value != defaultValue) Write(name, value);
    }
    HRESULT Result() const { return result_; }

private:
    void Write(std::string_view name, std::int32_t value) {
        VARIANT written;
        VariantInit(&written);
        written.vt = VT_I4;
        written.lVal = value;
        const HRESULT done = bag_.Write(WideAscii(name).c_str(), &written);
        if (FAILED(done)) result_ = done;
    }

    IPropertyBag& bag_;
    bool saveAll_;
    HRESULT result_ = S_OK;
};

HRESULT OpenContents(IStorage& storage, bool make, Com<IStream>& stream) {
    constexpr DWORD kMode = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
    if (make) return storage.CreateStream(kContents, kMode | STGM_CREATE, 0, 0, stream.Out());
    return storage.OpenStream(kContents, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.Out());
}

}  // namespace

void PersistPart::Exchange(PropertyExchange& exchange) {
    const SIZEL before = object_.Extent();
    auto cx = static_cast<std::int32_t>(before.cx);
    auto cy = static_cast<std::int32_t>(before.cy);
    exchange.ExchangeVersion(kVersion, true);
    exchange.ExchangeLong("_ExtentX", cx, kStartExtent.cx);
    exchange.ExchangeLong("_ExtentY", cy, kStartExtent.cy);
    if (cx >= 0 && cy >= 0) object_.ChangeExtent({cx, cy});

    // The version has been told; the map's own values follow.
    class WithoutVersion final : public PropertyExchange {
    public:
        explicit WithoutVersion(PropertyExchange& inner) : inner_(inner) {}
        void ExchangeVersion(std::uint32_t, bool) override {}
        void ExchangeLong(std::string_view name, std::int32_t& value, std::int32_t defaultValue) override {
            inner_.ExchangeLong(name, value, defaultValue);
        }

    private:
        PropertyExchange& inner_;
    } rest(exchange);
    object_.Ctrl().DoPropExchange(rest);
}

HRESULT PersistPart::GetClassID(CLSID* out) { return Give(out, kClassControl); }

HRESULT PersistPart::IsDirty() { return object_.Ctrl().Modified() ? S_OK : S_FALSE; }

HRESULT PersistPart::InitNew() {
    return Guarded([&] {
        const CallIn call(object_);
        Defaults defaults;
        Exchange(defaults);
        object_.Ctrl().SetModified(false);
        return S_OK;
    });
}

HRESULT PersistPart::InitNew(IStorage* storage) { return storage == nullptr ? E_POINTER : InitNew(); }

HRESULT PersistPart::Load(IStream* stream) {
    if (stream == nullptr) return E_POINTER;
    return Guarded([&] {
        const CallIn call(object_);
        Record record{};
        std::size_t have = 0;
        while (have < record.size()) {
            ULONG got = 0;
            const HRESULT read = stream->Read(record.data() + have, static_cast<ULONG>(record.size() - have), &got);
            if (FAILED(read)) return read;
            if (got == 0 || got > record.size() - have) return E_FAIL;
            have += got;
        }
        std::int32_t version = 0;
        RecordExchange(record, true).ExchangeLong("", version, 0);
        if (static_cast<std::uint32_t>(version) != kVersion) return STG_E_OLDFORMAT;
        RecordExchange load(record, true);
        Exchange(load);
        object_.Ctrl().SetModified(false);
        return S_OK;
    });
}

HRESULT PersistPart::Save(IStream* stream, BOOL clearDirty) {
    if (stream == nullptr) return E_POINTER;
    const Com<IUnknown> keep(&object_.Outer());
    const HRESULT done = Write(*stream);
    return done == S_OK ? Saved(clearDirty != FALSE) : done;
}

HRESULT PersistPart::Saved(bool unchanged) {
    const Com<IUnknown> keep(&object_.Outer());
    if (!unchanged) return S_OK;  // a copy
    object_.Ctrl().SetModified(false);
    object_.oleObject.TellSaved();
    return S_OK;
}

HRESULT PersistPart::Write(IStream& stream) {
    return Guarded([&]() -> HRESULT {
        const CallIn call(object_);
        Record record{};
        RecordExchange save(record, false);
        Exchange(save);
        ULONG written = 0;
        const HRESULT done = stream.Write(record.data(), static_cast<ULONG>(record.size()), &written);
        if (FAILED(done)) return done;
        return written == record.size() ? S_OK : STG_E_MEDIUMFULL;
    });
}

HRESULT PersistPart::GetSizeMax(ULARGE_INTEGER* bytes) {
    if (bytes == nullptr) return E_POINTER;
    bytes->QuadPart = sizeof(Record);
    return S_OK;
}

HRESULT PersistPart::Load(IStorage* storage) {
    if (storage == nullptr) return E_POINTER;
    const Com<IUnknown> keep(&object_.Outer());
    Com<IStream> stream;
    const HRESULT opened = OpenContents(*storage, false, stream);
    return FAILED(opened) ? opened : Load(stream.Get());
}

HRESULT PersistPart::Save(IStorage* storage, BOOL sameAsLoad) {
    if (storage == nullptr) return E_POINTER;
    const Com<IUnknown> keep(&object_.Outer());
    Com<IStream> stream;
    const HRESULT opened = OpenContents(*storage, true, stream);
    const HRESULT done = FAILED(opened) ? opened : Write(*stream.Get());
    saving_ = true;
    saved_ = done == S_OK;
    sameAsLoad_ = sameAsLoad != FALSE;
    return done;
}

HRESULT PersistPart::HandsOffStorage() {
    saving_ = true;
    return S_OK;
}

HRESULT PersistPart::SaveCompleted(IStorage* storage) {
    if (!std::exchange(saving_, false)) return E_UNEXPECTED;
    return std::exchange(saved_, false) ? Saved(sameAsLoad_ || storage != nullptr) : S_OK;
}

HRESULT PersistPart::Load(IPropertyBag* bag, IErrorLog* log) {
    if (bag == nullptr) return E_POINTER;
    return Guarded([&] {
        const CallIn call(object_);
        BagLoad load(*bag, log);
        Exchange(load);
        object_.Ctrl().SetModified(false);
        return S_OK;
    });
}

HRESULT PersistPart::Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) {
    if (bag == nullptr) return E_POINTER;
    return Guarded([&] {
        const CallIn call(object_);
        BagSave save(*bag, saveAll != FALSE);
        Exchange(save);
        return save.Result() == S_OK ? Saved(clearDirty != FALSE) : save.Result();
    });
}

}  // namespace orvane
