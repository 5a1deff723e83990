// What an object holds, as a value: a transaction keeps clones of it and puts them back when it is aborted.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "embedded/host/drawing_image.h"
#include "platform/host/object.h"

namespace QeHost {

struct Stub;

struct ObjectState {
    Stub* owner = nullptr;
    bool erased = false;
    /// By the application's record, so that the data follows a renamed application and vanishes with an erased one.
    std::map<Stub*, Embedded::ImageChain> extendedData;

    virtual ~ObjectState() = default;
    virtual std::unique_ptr<ObjectState> clone() const = 0;
    /// Ends all references to other objects, which may be gone before this one.
    virtual void letGo()
    {
        owner = nullptr;
        extendedData.clear();
    }

protected:
    ObjectState() = default;
    ObjectState(const ObjectState&) = default;
    ObjectState& operator=(const ObjectState&) = default;
};

template <class Derived>
struct CloneableState : ObjectState {
    std::unique_ptr<ObjectState> clone() const override
    {
        return std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }
};

/// An entry whose object is erased stays, so that it is back when the object is unerased; no query shows it.
struct DictionaryState final : CloneableState<DictionaryState> {
    std::map<std::wstring, Stub*> entries;

    void letGo() override
    {
        CloneableState::letGo();
        entries.clear();
    }
};

struct XrecordState final : CloneableState<XrecordState> {
    Embedded::ImageChain chain;
};

/// Erased records stay, for the same reason.
struct SymbolTableState final : CloneableState<SymbolTableState> {
    std::vector<Stub*> records;

    void letGo() override
    {
        CloneableState::letGo();
        records.clear();
    }
};

struct SymbolRecordState final : CloneableState<SymbolRecordState> {
    std::wstring name;
};

struct GeoDataState final : CloneableState<GeoDataState> {
    std::wstring coordinateSystem;
    QeDbObjectId block;

    void letGo() override
    {
        CloneableState::letGo();
        block.setNull();
    }
};

} // namespace QeHost
