// The four methods that every COM enumeration has.
#pragma once

#include <vector>

#include "hosts/ocx/com_base.h"

namespace orvane {

/// `Rules` tells how an item is copied and given up: `static bool Copy(const Item&, Item&)`, `static void Free(Item&)`, and the
/// enumeration's own identity: `static REFIID Iid()`.
template <class Interface, class Item, class Rules>
class Enumerator final : public ComObject<Interface> {
public:
    /// Takes over the items.
    explicit Enumerator(std::vector<Item> items, std::size_t at = 0) : items_(std::move(items)), at_(at) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG wanted, Item* out, ULONG* fetched) override {
        if (fetched != nullptr) *fetched = 0;
        if (out == nullptr || (wanted != 1 && fetched == nullptr)) return E_POINTER;
        ULONG given = 0;
        while (given < wanted && at_ < items_.size() && Rules::Copy(items_[at_], out[given])) {
            ++given;
            ++at_;
        }
        if (fetched != nullptr) *fetched = given;
        return given == wanted ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool enough = count <= items_.size() - at_;
        at_ = enough ? at_ + count : items_.size();
        return enough ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        at_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Interface** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        return Guarded([&] {
            std::vector<Item> copies(items_.size());
            for (std::size_t i = 0; i < items_.size(); ++i) {
                if (!Rules::Copy(items_[i], copies[i])) return E_OUTOFMEMORY;
            }
            *out = new Enumerator(std::move(copies), at_);
            return S_OK;
        });
    }

private:
    ~Enumerator() override {
        for (Item& item : items_) Rules::Free(item);
    }
    bool Supports(REFIID iid) const override { return iid == Rules::Iid(); }

    std::vector<Item> items_;
    std::size_t at_;
};

/// Items that are interfaces.
template <class Interface>
struct CountedItems {
    static bool Copy(Interface* const& from, Interface*& to) {
        to = from;
        to->AddRef();
        return true;
    }
    static void Free(Interface*& item) { item->Release(); }
};

}  // namespace orvane
