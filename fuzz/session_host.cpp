// The host's steps of a session.
#include <array>

#include "fuzz/drawing_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/sample_definitions.h"
#include "fuzz/session.h"
#include "storage/definition_xrecord.h"
#include "storage/geodata.h"
#include "storage/legacy_projection.h"
#include "support/chain.h"
#include "support/drawing.h"

namespace Fuzz {
namespace {

constexpr std::size_t kMaximumNesting = 4;
constexpr int kMaximumSaves = 3; // a save takes as long as all other steps of a session

/// Stores a new xrecord under the key and replaces any other object.
Qeapp::ErrorStatus putXrecord(QeDbDatabase* database, const wchar_t* key, const Tests::Items& items)
{
    Orvel::NamedObjects dictionary;
    if (const Qeapp::ErrorStatus result = dictionary.openIn(database, QeDb::kForWrite); result != Qeapp::eOk)
        return result;
    const Orvel::HostObject<QeDbXrecord> xrecord(new (std::nothrow) QeDbXrecord);
    if (!xrecord)
        return Qeapp::eOutOfMemory;
    if (const Qeapp::ErrorStatus result = xrecord->setFromRbChain(Tests::makeChain(items).get(), database);
        result != Qeapp::eOk)
        return result;
    QeDbObjectId id;
    return dictionary->setAt(key, xrecord.get(), id);
}

} // namespace

void Session::startTransaction()
{
    releaseNamedObjects();
    if (snapshots_.size() == kMaximumNesting)
        return;
    snapshots_.push_back(Tests::drawingContents(*database()));
    require(database()->transactionManager()->startTransaction() != nullptr, "a transaction can be started");
}

void Session::commitTransaction()
{
    releaseNamedObjects();
    if (snapshots_.empty())
        return;
    require(database()->transactionManager()->endTransaction() == Qeapp::eOk, "a transaction can be ended");
    snapshots_.pop_back();
}

void Session::abortTransaction()
{
    releaseNamedObjects();
    if (snapshots_.empty())
        return;
    require(database()->transactionManager()->abortTransaction() == Qeapp::eOk, "a transaction can be aborted");
    const auto withoutVersion = [](const std::string& contents) { return contents.substr(contents.find('\n')); };
    require(withoutVersion(Tests::drawingContents(*database())) == withoutVersion(snapshots_.back()),
            "a transaction that was aborted leaves no trace, but for the version of a save within it");
    snapshots_.pop_back();
}

void Session::holdNamedObjects()
{
    const auto mode = source_.below(2) == 0 ? QeDb::kForRead : QeDb::kForWrite;
    if (!held_)
        require(held_.openIn(database(), mode) == Qeapp::eOk, "an object that is not open can be opened");
}

void Session::releaseNamedObjects()
{
    held_.reset();
}

void Session::putForeignXrecord()
{
    static constexpr std::array kKeys{Orvel::kCsDefinitionXrecordKey, L"ORVEL_CS_TRANSFORMATION_CONFIG", L"A", L"Z"};
    const wchar_t* const key = kKeys.at(source_.below(kKeys.size()));
    const Tests::Items items{{300, L"foreign"}, {1071, static_cast<int>(source_.byte())}};
    static_cast<void>(putXrecord(database(), key, items)); // it may be open
}

void Session::putDefinitionChain()
{
    Tests::Items items{{1071, static_cast<int>(source_.below(3))}};
    for (std::size_t count = source_.below(5); count > 0; --count) {
        const std::vector<SampleDefinition>& samples = sampleDefinitions();
        items.push_back({1002, L"{"});
        items.push_back({310, samples[source_.below(samples.size())].packed});
        items.push_back({1002, L"}"});
    }
    static_cast<void>(putXrecord(database(), Orvel::kCsDefinitionXrecordKey, items)); // it may be open
}

void Session::putLegacyCode()
{
    const std::wstring code = nextCode();
    static_cast<void>(
        callWithFault([&] { return Orvel::WriteLegacyProjectionCode(database(), code.c_str()); })); // may fail
}

void Session::putGeoDataText()
{
    const std::wstring text = nextCode();
    static_cast<void>(
        callWithFault([&] { return Orvel::WriteGeoDataCoordinateSystem(database(), text.c_str()); })); // may fail
}

void Session::save()
{
    const QeDb::QeDbDwgVersion version = nextVersion();
    if (saves_ == kMaximumSaves)
        return;
    ++saves_;
    const bool isChecked = !held_; // the module may be unable to reach an object that is open
    const std::optional<std::wstring> code = isChecked ? storedCode() : std::nullopt;
    const std::optional<std::string> before = contents();
    if (!before)
        return;
    SavedDrawing saved;
    const Qeapp::ErrorStatus result = callWithFault([&] {
        saved = saveDrawing(*database(), version);
        return saved.status;
    });
    if (result != Qeapp::eOk)
        return requireUnchanged(before, "a save that failed changes nothing");
    requireSameWhenLoaded(*database(), saved.bytes);
    require(hasCallFailed_ || !code || storedCode() == code, "a save in another version keeps the coordinate system");
}

void Session::planFault()
{
    const std::size_t occurrence = source_.byte() + std::size_t{1};
    fault_ = Embedded::FaultPlan{.call = "", .occurrence = occurrence, .fromThenOn = source_.below(2) == 1};
}

} // namespace Fuzz
