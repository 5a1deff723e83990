// The fixture for dictionaries of xrecords: a dictionary in the current document.
#pragma once

#include <memory>
#include <optional>

#include "storage/failing_calls.h"
#include "storage/resbuf_dictionary.h"
#include "support/chain.h"
#include "support/drawing.h"
#include "support/platform_test.h"
#include "support/scoped_document.h"

namespace Tests {

using Iterator = std::unique_ptr<Orvel::CResbufDictionaryIterator>;
using OpenedDictionary = Orvel::HostObject<QeDbDictionary>;
using Orvel::CResbufDictionary;
using Orvel::ResbufChain;

inline const Items kFirst{{300, L"first"}};
inline const Items kSecond{{300, L"second"}, {1071, 2}};

class ResbufDictionary : public PlatformTest {
protected:
    ScopedDocument document;
    CResbufDictionary dictionary{L"NAMES", document.database()};

    std::string contents() const { return drawingContents(*document.database()); }

    bool set(const wchar_t* key, const Items& items, QeDbObjectReactor* reactor = nullptr)
    {
        return dictionary.SetResbuf(key, makeChain(items).get(), reactor);
    }
    /// The chain of an entry; no value where the entry has no chain.
    std::optional<Items> at(const wchar_t* key) const
    {
        ResbufChain chain;
        return dictionary.GetResbuf(key, chain.put()) ? std::optional(readChain(chain.get())) : std::nullopt;
    }
    /// Adds an entry that is a dictionary.
    void setDictionary(const wchar_t* key)
    {
        const OpenedDictionary parent(dictionary.OpenDictionary(QeDb::kForWrite));
        const OpenedDictionary child(new QeDbDictionary);
        QeDbObjectId id;
        ASSERT_EQ(parent->setAt(key, child.get(), id), Qeapp::eOk);
    }
    /// Puts an xrecord under the dictionary's name.
    void occupyName()
    {
        Orvel::NamedObjects parent;
        ASSERT_EQ(parent.openIn(document.database(), QeDb::kForWrite), Qeapp::eOk);
        const Orvel::HostObject<QeDbXrecord> xrecord(new QeDbXrecord);
        QeDbObjectId id;
        ASSERT_EQ(parent->setAt(L"NAMES", xrecord.get(), id), Qeapp::eOk);
    }
};

} // namespace Tests
