// The library's definitions beside what PROJ does with the same codes and the same PROJJSON.
#include <proj.h>

#include <memory>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/host/application/application.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "measurement.h"
#include "peers/comparisons.h"
#include "storage/definition_code.h"
#include "storage/library_holder.h"
#include "storage/serialized_text.h"
#include "storage/utf16le.h"

namespace Bench {
namespace {

namespace Library = Orvel::Library;
using System = Library::CoordinateReferenceSystemDefinition;
using SystemHolder = Orvel::LibraryObject<System>;
using ArrayHolder = Orvel::LibraryObject<Library::DefinitionBaseArray>;

struct ContextRelease {
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
    void operator()(PJ* object) const { proj_destroy(object); }
};
using ContextHolder = std::unique_ptr<PJ_CONTEXT, ContextRelease>;
using ObjectHolder = std::unique_ptr<PJ, ContextRelease>;

const char* const kOneLine[] = {"MULTILINE=NO", nullptr};

/// More systems than either side keeps in memory, so that each time every one of them is made anew.
struct Systems {
    std::vector<std::wstring> codes;
    std::vector<std::string> codesUtf8;
    std::vector<std::vector<unsigned char>> texts; // UTF-16LE with NUL, as they are stored
    std::vector<std::string> projjson;
    ContextHolder context{proj_context_create()};
};

SystemHolder loaded(const std::wstring& code)
{
    SystemHolder system;
    requireSuccess(System::Load(code.c_str(), system.put()) == Library::statusOk, "loading a system");
    return system;
}

void add(Systems& systems, const std::wstring& code)
{
    std::wstring text;
    requireSuccess(Orvel::SerializeToWideText(text, loaded(code).get(), true) == Library::statusOk,
                   "writing a definition");
    const std::string codeUtf8 = Embedded::utf8FromWide(code);
    const ObjectHolder object(proj_create(systems.context.get(), codeUtf8.c_str()));
    systems.codes.push_back(code);
    systems.codesUtf8.push_back(codeUtf8);
    systems.texts.push_back(Orvel::encodeUtf16le(text.c_str()));
    systems.projjson.emplace_back(proj_as_projjson(systems.context.get(), object.get(), kOneLine));
}

std::shared_ptr<Systems> projectedSystems()
{
    constexpr std::size_t kSystems = 200;
    constexpr std::size_t kEvery = 20;
    auto systems = std::make_shared<Systems>();
    std::size_t number = 0;
    for (const Embedded::CatalogEntry& entry : Embedded::catalogEntries()) {
        const bool isWanted =
            entry.kind == Library::kindProjected && !entry.deprecated && entry.code.starts_with(L"EPSG:");
        if (isWanted && number++ % kEvery == 0 && systems->codes.size() < kSystems)
            add(*systems, entry.code);
    }
    requireSuccess(systems->codes.size() == kSystems, "enough systems");
    return systems;
}

Comparison loading(const std::shared_ptr<Systems>& systems)
{
    return {.work = "load 200 systems, cold",
            .peer = "PROJ create and PROJJSON",
            .goal = 0.7,
            .ours =
                [systems] {
                    for (const std::wstring& code : systems->codes)
                        loaded(code);
                },
            .theirs =
                [systems] {
                    for (const std::string& code : systems->codesUtf8) {
                        const ObjectHolder object(proj_create(systems->context.get(), code.c_str()));
                        requireSuccess(proj_as_projjson(systems->context.get(), object.get(), kOneLine) != nullptr,
                                       "PROJJSON");
                    }
                }};
}

ArrayHolder deserialized(const std::vector<unsigned char>& text)
{
    ArrayHolder array;
    requireSuccess(Library::DefinitionStream::Deserialize_s(array.put(), text.data(), text.size(),
                                                            Library::formatAutomatic, -1) == Library::statusOk,
                   "reading a definition");
    return array;
}

Comparison deserializing(const std::shared_ptr<Systems>& systems)
{
    return {.work = "deserialize 200 systems, cold",
            .peer = "PROJ's parse of the PROJJSON",
            .goal = 0.75,
            .ours =
                [systems] {
                    for (const auto& text : systems->texts)
                        deserialized(text);
                },
            .theirs =
                [systems] {
                    for (const std::string& projjson : systems->projjson)
                        requireSuccess(ObjectHolder(proj_create(systems->context.get(), projjson.c_str())) != nullptr,
                                       "parse");
                }};
}

/// A drawing with a system whose definition the library has in its memory.
struct AssignedDrawing {
    AssignedDrawing() : document(Embedded::openDocument(std::make_unique<QeDbDatabase>()))
    {
        requireSuccess(Zentara::Gis::Orvel::CoordinateSystem::SetCoordinateSystem(L"EPSG:25832", document->database(),
                                                                                  nullptr) == Qeapp::eOk,
                       "assigning");
        std::wstring wide;
        requireSuccess(Orvel::SerializeToWideText(wide, loaded(L"EPSG:25832").get(), true) == Library::statusOk,
                       "writing");
        text = Orvel::encodeUtf16le(wide.c_str());
    }
    AssignedDrawing(const AssignedDrawing&) = delete;
    AssignedDrawing& operator=(const AssignedDrawing&) = delete;
    ~AssignedDrawing() { static_cast<void>(Embedded::closeDocument(document)); } // nothing here locks it

    QeApDocument* document;
    std::vector<unsigned char> text;
};

void readByLibrary(const AssignedDrawing& drawing)
{
    const ArrayHolder array = deserialized(drawing.text);
    Orvel::LibraryObject<Library::DefinitionBase> item(array->Remove(0));
    loaded(Orvel::definitionCode(item.get()));
}

Comparison reading()
{
    const auto drawing = std::make_shared<AssignedDrawing>();
    return {.work = "GetCoordinateSystem, definition in memory",
            .peer = "the same library calls",
            .goal = 0.9,
            .ours =
                [drawing] {
                    SystemHolder system;
                    bool isKnown = false;
                    requireSuccess(Zentara::Gis::Orvel::CoordinateSystem::GetCoordinateSystem(
                                       system.put(), &isKnown, drawing->document->database()) == Qeapp::eOk &&
                                       isKnown,
                                   "reading");
                },
            .theirs = [drawing] { readByLibrary(*drawing); }};
}

} // namespace

void addLibraryComparisons(std::vector<Comparison>& comparisons)
{
    const auto systems = projectedSystems();
    comparisons.push_back(loading(systems));
    comparisons.push_back(deserializing(systems));
    comparisons.push_back(reading());
}

} // namespace Bench
