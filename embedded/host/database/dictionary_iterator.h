// A walk over the entries that a dictionary had when the walk began.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "embedded/host/database/object.h"
#include "platform/host/dictionary.h"

namespace QeHost {

class DictionaryIterator final : public QeDbDictionaryIterator {
public:
    explicit DictionaryIterator(const QeDbDictionary& dictionary);
    ~DictionaryIterator() override;
    DictionaryIterator(const DictionaryIterator&) = delete;
    DictionaryIterator& operator=(const DictionaryIterator&) = delete;

    bool done() const override;
    bool next() override;
    const wchar_t* name() const override;
    QeDbObjectId objectId() const override;
    Qeapp::ErrorStatus getObject(QeDbObject*& object, QeDb::OpenMode mode) const override;

private:
    std::vector<std::pair<std::wstring, QeDbObjectId>> entries_;
    std::size_t position_ = 0;
};

} // namespace QeHost
