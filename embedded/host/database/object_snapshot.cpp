#include "embedded/host/database/object_snapshot.h"

#include <utility>

namespace QeHost {

class ObjectSnapshot::Saver final : public FieldVisitor {
public:
    explicit Saver(std::vector<Field>& fields) : fields_(fields) {}

    void text(std::string_view /*field*/, std::wstring& text) override { fields_.emplace_back(text); }
    void reference(std::string_view /*field*/, QeDbObjectId& object) override { fields_.emplace_back(object); }
    void values(Embedded::ResbufValues& values) override { fields_.emplace_back(values); }
    void entries(DictionaryEntries& entries) override { fields_.emplace_back(entries.changes()); }
    void records(std::vector<ObjectRecord*>& records) override { fields_.emplace_back(records); }
    void extendedData(ExtendedData& data) override { fields_.emplace_back(data); }

private:
    std::vector<Field>& fields_;
};

class ObjectSnapshot::Restorer final : public FieldVisitor {
public:
    explicit Restorer(std::vector<Field>& fields) : next_(fields.begin()) {}

    void text(std::string_view /*field*/, std::wstring& text) override { text.swap(nextField<std::wstring>()); }
    void reference(std::string_view /*field*/, QeDbObjectId& object) override { object = nextField<QeDbObjectId>(); }
    void values(Embedded::ResbufValues& values) override { values.swap(nextField<Embedded::ResbufValues>()); }
    void entries(DictionaryEntries& entries) override
    {
        entries.restoreChanges(std::move(nextField<DictionaryEntries::Map>()));
    }
    void records(std::vector<ObjectRecord*>& records) override
    {
        records.swap(nextField<std::vector<ObjectRecord*>>());
    }
    void extendedData(ExtendedData& data) override { data.swap(nextField<ExtendedData>()); }

private:
    template <class T>
    T& nextField()
    {
        return *std::get_if<T>(&*next_++);
    }

    std::vector<Field>::iterator next_;
};

ObjectSnapshot::ObjectSnapshot(ObjectState& state) : owner_(state.owner), erased_(state.erased)
{
    Saver saver(fields_);
    state.visitAll(saver);
}

void ObjectSnapshot::restore(ObjectState& state) noexcept
{
    state.owner = owner_;
    state.erased = erased_;
    Restorer restorer(fields_);
    state.visitAll(restorer);
    fields_.clear();
}

namespace {

class ReferenceClearer final : public FieldVisitor {
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
    ReferenceClearer clearer;
    state.visitAll(clearer);
}

} // namespace QeHost
