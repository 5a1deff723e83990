#include "conversions.h"

#include "draft/extensions.h"

#include <cstring>
#include <cwchar>
#include <map>

using Platform::toStatus;

// The runtime

class QeRxClass {};

bool QeRxObject::isKindOf(const QeRxClass* ancestor) const
{
    return ancestor == m_class;
}

QeRxClass* QeRxDynamicLinker::desc()
{
    static QeRxClass descriptor;
    return &descriptor;
}

bool QeRxDynamicLinker::unlockApplication(void* appHandle)
{
    const auto number = reinterpret_cast<Draft::Extensions::Number>(appHandle);
    return Draft::Extensions::get().allowUnloading(number) == Draft::Outcome::done;
}

QeRxObject* QeRxDictionary::at(const wchar_t* key) const
{
    static QeRxDynamicLinker linker;
    return std::wcscmp(key, kQeRxDynamicLinkerKey) == 0 ? &linker : nullptr;
}

QeRxDictionary* qerxSysRegistry()
{
    static QeRxDictionary registry;
    return &registry;
}

bool qerxRegisterAppMDIAware(void*)
{
    return true; // This product asks nobody whether it may open another drawing.
}

// Drawings and documents

class QeDbTransaction {};

class QeApDocument {
public:
    explicit QeApDocument(Draft::Drawing& drawing) : m_drawing(drawing) {}
    Draft::Drawing& drawing() const { return m_drawing; }

private:
    Draft::Drawing& m_drawing;
};

namespace {

// The product's drawing is a document as well; the platform tells the two apart.
struct Companion {
    explicit Companion(Draft::Drawing& drawing) : database(drawing), document(drawing) {}

    QeDbDatabase database;
    QeApDocument document;
};

Companion* companionOf(Draft::Drawing* drawing)
{
    if (!drawing)
        return nullptr;
    if (!drawing->companion())
        drawing->companion() = std::make_shared<Companion>(*drawing);
    return static_cast<Companion*>(drawing->companion().get());
}

template <class T>
Qeapp::ErrorStatus openRecord(T*& object, Draft::Link link, QeDb::OpenMode mode)
{
    return qedbOpenObject(object, QeDbObjectId(link), mode);
}

} // namespace

QeDbDatabase* QeDbDatabase::of(Draft::Drawing* drawing)
{
    Companion* const companion = companionOf(drawing);
    return companion ? &companion->database : nullptr;
}

Qeapp::ErrorStatus QeDbDatabase::getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode mode)
{
    return openRecord(dictionary, m_drawing.root(), mode);
}

Qeapp::ErrorStatus QeDbDatabase::getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode mode)
{
    return openRecord(table, m_drawing.applications(), mode);
}

QeDbTransaction* QeDbTransactionManager::startTransaction()
{
    static QeDbTransaction transaction; // The module asks nothing of it.
    return m_drawing.beginStep() == Draft::Outcome::done ? &transaction : nullptr;
}

Qeapp::ErrorStatus QeDbTransactionManager::endTransaction()
{
    return toStatus(m_drawing.keepStep());
}

Qeapp::ErrorStatus QeDbTransactionManager::abortTransaction()
{
    return toStatus(m_drawing.undoStep());
}

Qeapp::ErrorStatus QeDbSymbolUtilitiesServices::blockModelSpaceId(QeDbDatabase* database, QeDbObjectId& id) const
{
    if (!database)
        return Qeapp::eInvalidInput;
    if (Core::failsNow())
        return toStatus(Draft::Outcome::trialFailure);
    id = QeDbObjectId(database->drawing().modelSpace());
    return Qeapp::eOk;
}

const QeDbSymbolUtilitiesServices* qedbSymUtil()
{
    static const QeDbSymbolUtilitiesServices services;
    return &services;
}

QeDbDatabase* QeDbHostApplicationServices::workingDatabase() const
{
    return QeDbDatabase::of(Draft::Session::get().current());
}

const wchar_t* QeDbHostApplicationServices::getUserRegistryProductRootKey() const
{
    static const std::wstring key = Core::toWide(std::string_view(Draft::Session::settingsKey()));
    return key.c_str();
}

QeDbHostApplicationServices* qedbHostApplicationServices()
{
    static QeDbHostApplicationServices services;
    return &services;
}

QeApDocument* QeApDocManager::curDocument() const
{
    Companion* const companion = companionOf(Draft::Session::get().current());
    return companion ? &companion->document : nullptr;
}

Qeapp::ErrorStatus QeApDocManager::lockDocument(QeApDocument* document, QeAp::DocLockMode, const wchar_t*,
                                                const wchar_t*, bool)
{
    return document ? toStatus(Draft::Session::get().claim(document->drawing())) : Qeapp::eInvalidInput;
}

Qeapp::ErrorStatus QeApDocManager::unlockDocument(QeApDocument* document)
{
    return document ? toStatus(Draft::Session::get().release(document->drawing())) : Qeapp::eInvalidInput;
}

QeApDocManager* qeDocManager()
{
    static QeApDocManager manager;
    return &manager;
}

// Saving

namespace {

std::map<QeDbDecompositionReactor*, Draft::Session::Subscription>& subscriptions()
{
    static std::map<QeDbDecompositionReactor*, Draft::Session::Subscription> all;
    return all;
}

} // namespace

Qeapp::ErrorStatus QeDbSaveErrorRecorder::recordError(Qeapp::ErrorStatus code)
{
    m_log.entries.emplace_back(Platform::toOutcome(code), Draft::Text());
    return code;
}

Qeapp::ErrorStatus QeDbSaveErrorMessageRecorder::recordError(Qeapp::ErrorStatus code, const wchar_t* message)
{
    m_log.entries.emplace_back(Platform::toOutcome(code), Platform::toText(message));
    return code;
}

Qeapp::ErrorStatus QeDbDecompositionReactor::decomposeForSave(QeDbDatabase*, QeDb::QeDbDwgVersion,
                                                              QeDbSaveErrorRecorder*, QeDbSaveErrorMessageRecorder*)
{
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbDecompositionManager::addReactor(QeDbDecompositionReactor* reactor)
{
    if (!reactor || subscriptions().count(reactor) != 0)
        return Qeapp::eInvalidInput;
    subscriptions()[reactor] =
        Draft::Session::get().subscribe([reactor](Draft::Drawing& drawing, int edition, Draft::SaveLog& log) {
            QeDbSaveErrorRecorder errors(log);
            QeDbSaveErrorMessageRecorder messages(log);
            return Platform::toOutcome(reactor->decomposeForSave(
                QeDbDatabase::of(&drawing), static_cast<QeDb::QeDbDwgVersion>(edition), &errors, &messages));
        });
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbDecompositionManager::removeReactor(QeDbDecompositionReactor* reactor)
{
    const auto found = subscriptions().find(reactor);
    if (found == subscriptions().end())
        return Qeapp::eInvalidInput;
    Draft::Session::get().unsubscribe(found->second);
    subscriptions().erase(found);
    return Qeapp::eOk;
}

QeDbDecompositionManager* qedbGetDecompositionManager()
{
    static QeDbDecompositionManager manager;
    return &manager;
}
