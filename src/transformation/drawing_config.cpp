#include "transformation/drawing_config.h"

#include <memory>

#include "storage/database_argument.h"
#include "storage/resbuf_dictionary.h"
#include "transformation/config_text.h"

namespace Orvel {
namespace {

/// Reads the first entry, whatever its key is. Later entries are never read.
ResbufChain readFirstEntry(const CResbufDictionary& dictionary)
{
    ResbufChain chain;
    const std::unique_ptr<CResbufDictionaryIterator> entry(dictionary.NewIterator());
    if (entry)
        static_cast<void>(entry->GetResbuf(chain.put())); // the chain stays null when the entry cannot be read
    return chain;
}

} // namespace

ResbufChain drawingTransformationConfig()
{
    ResbufChain chain = readFirstEntry(CResbufDictionary(kTransformationConfigDictionary, nullptr));
    if (chain && chain->restype != QeRb::kText)
        chain.reset();
    return chain;
}

bool ReadDrawingTransformationConfig(wchar_t*& text)
{
    text = sharedEmptyText();
    const ResbufChain chain = drawingTransformationConfig();
    HostString copy;
    if (!chain || qeutNewString(chain->resval.rstring, copy.put()) != Qeapp::eOk)
        return false;
    text = copy.release();
    return true;
}

bool WriteDrawingTransformationConfig(const wchar_t* text)
{
    QeDbDatabase* const database = resolveDatabase(nullptr);
    if (database == nullptr)
        return false; // without locking a document
    const ResbufChain chain(qeutBuildList(QeRb::kText, text, QeRb::kListEnd));
    return chain && CResbufDictionary(kTransformationConfigDictionary, database)
                        .SetResbuf(kTransformationConfigKey, chain.get(), nullptr);
}

} // namespace Orvel
