#include "configuration_operations.h"

#include <array>
#include <cwchar>

#include "allocation_count.h"
#include "configuration_text.h"
#include "transformation/registry_settings.h"

namespace Bench {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
using Collection = Cs::OrvelTransformationConfigItemCollection;
using Scene = ConfigurationScene;
using Target = Cs::CsTransformationConfigTargetType;

constexpr std::size_t kFewerInRegistry = 500; // each value waits for the disk

void doNothing(Scene& /*scene*/)
{
}

template <Target target>
void set(Scene& scene)
{
    scene.succeeded = Cs::SetCsTransformationConfig(scene.text().c_str(), target);
    scene.isStored = scene.succeeded;
}

template <Target target>
void get(Scene& scene)
{
    wchar_t* text = nullptr;
    scene.succeeded = Cs::GetCsTransformationConfig(text, target);
    if (scene.succeeded)
        scene.read.reset(text);
}

template <Target target>
void clear(Scene& scene)
{
    scene.succeeded = Cs::ClearCsTransformationConfig(target);
    scene.isStored = false;
}

/// Stores the text unless it is stored already.
template <void (*storeText)(Scene&)>
void store(Scene& scene)
{
    if (!scene.isStored)
        storeText(scene);
}

/// The host keeps replaced objects until the drawing is closed.
void renewDrawing(Scene& scene)
{
    scene.renewDrawing();
    scene.isStored = false;
}

void renewAndStoreInDrawing(Scene& scene)
{
    if (scene.isStored)
        return;
    scene.renewDrawing();
    set<Target::Drawing>(scene);
}

void setRegistry(Scene& scene)
{
    scene.succeeded = Orvel::WriteRegistryTransformationSettings(scene.text().c_str());
    scene.isStored = scene.succeeded;
}

void getRegistry(Scene& scene)
{
    wchar_t* text = nullptr;
    scene.succeeded = Orvel::ReadRegistryTransformationSettings(text);
    if (scene.succeeded)
        scene.read.reset(text);
}

void find(Scene& scene, const CodePair& pair)
{
    scene.found.reset(Cs::GetCsConfiguredTransformationInfo(pair.source.c_str(), pair.target.c_str()));
}

void findLast(Scene& scene)
{
    find(scene, pairAt(scene.items() - 1));
}

void findAbsent(Scene& scene)
{
    find(scene, absentPair());
}

void renewCollection(Scene& scene)
{
    scene.collection = Ptr<Collection>(Collection::CreateInstance());
}

void parse(Scene& scene)
{
    scene.collection->FromXmlString(scene.text().c_str());
    scene.isStored = true;
}

void renewAndParse(Scene& scene)
{
    renewCollection(scene);
    parse(scene);
}

void write(Scene& scene)
{
    scene.written = scene.collection->ToXmlString();
}

void release(Scene& scene)
{
    scene.releaseResults();
}

bool reportsSuccess(const Scene& scene)
{
    return scene.succeeded;
}

bool hasRead(const Scene& scene)
{
    return scene.read && scene.text() == scene.read.get();
}

bool hasFoundLast(const Scene& scene)
{
    return scene.found && std::wcscmp(scene.found->GetName(), nameAt(scene.items() - 1)) == 0;
}

bool hasFoundNothing(const Scene& scene)
{
    return !scene.found;
}

bool hasParsed(const Scene& scene)
{
    return static_cast<std::size_t>(scene.collection->GetCount()) == scene.items();
}

bool hasWritten(const Scene& scene)
{
    return scene.written == scene.text();
}

bool isRegistryEmpty(const Scene& scene)
{
    wchar_t* text = nullptr;
    if (!scene.succeeded || !Orvel::ReadRegistryTransformationSettings(text))
        return false;
    const Orvel::HostString read(text);
    return *read.get() == L'\0';
}

constexpr auto kDrawing = Target::Drawing;
constexpr auto kUser = Target::User;
constexpr auto kStoreInDrawing = store<set<kDrawing>>;
constexpr auto kStoreInFile = store<set<kUser>>;
constexpr auto kStoreInRegistry = store<setRegistry>;
constexpr std::array kOperations{
    Operation{"drawing", "set", 1, true, doNothing, renewDrawing, set<kDrawing>, reportsSuccess},
    Operation{"drawing", "get", 1, false, kStoreInDrawing, release, get<kDrawing>, hasRead},
    Operation{"drawing", "find last pair", 1, false, kStoreInDrawing, release, findLast, hasFoundLast},
    Operation{"drawing", "find absent pair", 1, false, kStoreInDrawing, release, findAbsent, hasFoundNothing},
    Operation{"drawing", "clear", 1, false, doNothing, renewAndStoreInDrawing, clear<kDrawing>, reportsSuccess},
    Operation{"file", "set", 1, true, doNothing, doNothing, set<kUser>, reportsSuccess},
    Operation{"file", "get", 1, false, kStoreInFile, release, get<kUser>, hasRead},
    Operation{"file", "find last pair", 1, false, kStoreInFile, release, findLast, hasFoundLast},
    Operation{"collection", "parse", 1, true, doNothing, renewCollection, parse, hasParsed},
    // A growing text has a capacity of up to twice its length, and its old memory as well while it is copied.
    Operation{"collection", "write", 1, false, store<renewAndParse>, release, write, hasWritten, 4},
    Operation{"registry", "set", kFewerInRegistry, true, doNothing, clear<kUser>, setRegistry, reportsSuccess},
    Operation{"registry", "get", kFewerInRegistry, false, kStoreInRegistry, release, getRegistry, hasRead},
    Operation{"registry", "clear", kFewerInRegistry, false, doNothing, kStoreInRegistry, clear<kUser>, isRegistryEmpty},
};

} // namespace

std::span<const Operation> operations()
{
    return kOperations;
}

double peakPerText(const Operation& operation, const ConfigurationScene& scene)
{
    const std::size_t held = operation.takesText ? scene.textInBytes() : 0;
    return static_cast<double>(peakBytes() - scene.allocatedAtFirst() + held) /
           static_cast<double>(scene.textInBytes());
}

} // namespace Bench
