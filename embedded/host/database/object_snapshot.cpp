#include "embedded/host/database/object_snapshot.h"

#include <utility>

namespace QeHost {

class ObjectSnapshot::Taker final : public FieldVisitor {
public:
    explicit Taker(std::vector<Field>& fields) : fields_(fields) {}

    void text(std::string_view /*field*/, std::wstring& text) override { fields_.emplace_back(text); }
    void reference(std::string_view /*field*/, QeDbObjectId& object) override { fields_.emplace_back(object); }
    void values(Embedded::ResbufValues& values) override { fields_.emplace_back(values); }
    void entries(DictionaryEntries& entries) override { fields_.emplace_back(entries.takeChanges()); }
    void records(std::vector<ObjectRecord*>& records) override { fields_.emplace_back(records); }
    void extendedData(ExtendedData& data) override { fields_.emplace_back(data); }

private:
    std::vector<Field>& fields_;
};

class ObjectSnapshot::Giver final : public FieldVisitor {
public:
    explicit Giver(std::vector<Field>& fields) : next_(fields.begin()) {}

    void text(std::string_view /*field*/, std::wstring& text) override { text.swap(taken<std::wstring>()); }
    void reference(std::string_view /*field*/, QeDbObjectId& object) override { object = taken<QeDbObjectId>(); }
    void values(Embedded::ResbufValues& values) override { values.swap(taken<Embedded::ResbufValues>()); }
    void entries(DictionaryEntries& entries) override
    {
        entries.restoreChanges(std::move(taken<DictionaryEntries::Map>()));
    }
    void records(std::vector<ObjectRecord*>& records) override { records.swap(taken<std::vector<ObjectRecord*>>()); }
    void extendedData(ExtendedData& data) override { data.swap(taken<ExtendedData>()); }

private:
    template <class T>
    T& taken()
    {
        return *std::get_if<T>(&*next_++);
    }

    std::vector<Field>::iterator next_;
};

ObjectSnapshot::ObjectSnapshot(ObjectState& state) : owner_(state.owner), erased_(state.erased)
{
    Taker taker(fields_);
    state.visitAll(taker);
}

void ObjectSnapshot::restore(ObjectState& state) noexcept
{
    state.owner = owner_;
    state.erased = erased_;
    Giver giver(fields_);
    state.visitAll(giver);
    fields_.clear();
}

namespace {

class ReferenceEnder final : public FieldVisitor {
public:
    void text(std::string_view /*field*/, std::wstring& /*text*/) override {}
    void reference(std::string_view /*field*/, QeDbObjectId& object) override { object.setNull(); }
    void values(Embedded::ResbufValues& /*values*/) override {}
    void entries(DictionaryEntries& entries) override { entries.restoreChanges({}); }
    void records(std::vector<ObjectRecord*>& records) override { records.clear(); }
    void extendedData(ExtendedData& data) override { data.clear(); }
};

} // namespace

void detach(ObjectState& state) noexcept
{
    state.owner = nullptr;
    ReferenceEnder ender;
    state.visitAll(ender);
}

} // namespace QeHost
