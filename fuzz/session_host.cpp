// The steps of a session that the host makes.
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

constexpr std::size_t kDeepestTransactions = 4;
constexpr int kMostSaves = 3; // one takes as long as all other steps of a session

/// Puts a new xrecord under the key, whatever is there.
Qeapp::ErrorStatus putXrecord(QeDbDatabase* database, const wchar_t* key, const Tests::Items& items)
{
    Orvel::NamedObjects dictionary;
    if (const Qeapp::ErrorStatus result = dictionary.openIn(database, QeDb::kForWrite); result != Qeapp::eOk)
        return result;
    const Orvel::HostObject<QeDbXrecord> xrecord(new (std::nothrow) QeDbXrecord);
    if (!xrecord)
        return Qeapp::eOutOfMemory;
    if (const Qeapp::ErrorStatus result = xrecord->setFromRbChain(Tests::chainOf(items).get(), database);
        result != Qeapp::eOk)
        return result;
    QeDbObjectId id;
    return dictionary->setAt(key, xrecord.get(), id);
}

} // namespace

void Session::startTransaction()
{
    letGoOfNamedObjects();
    if (snapshots_.size() == kDeepestTransactions)
        return;
    snapshots_.push_back(Tests::contentsOf(*database()));
    require(database()->transactionManager()->startTransaction() != nullptr, "a transaction can be started");
}

void Session::commitTransaction()
{
    letGoOfNamedObjects();
    if (snapshots_.empty())
        return;
    require(database()->transactionManager()->endTransaction() == Qeapp::eOk, "a transaction can be ended");
    snapshots_.pop_back();
}

void Session::abortTransaction()
{
    letGoOfNamedObjects();
    if (snapshots_.empty())
        return;
    require(database()->transactionManager()->abortTransaction() == Qeapp::eOk, "a transaction can be aborted");
    const auto withoutVersion = [](const std::string& contents) { return contents.substr(contents.find('\n')); };
    require(withoutVersion(Tests::contentsOf(*database())) == withoutVersion(snapshots_.back()),
            "a transaction that was aborted leaves no trace, but for the version of a save within it");
    snapshots_.pop_back();
}

void Session::holdNamedObjects()
{
    const auto mode = source_.below(2) == 0 ? QeDb::kForRead : QeDb::kForWrite;
    if (!held_)
        require(held_.openIn(database(), mode) == Qeapp::eOk, "what nobody has open can be opened");
}

void Session::letGoOfNamedObjects()
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
    const std::wstring code = anyCode();
    static_cast<void>(
        underFault([&] { return Orvel::WriteLegacyProjectionCode(database(), code.c_str()); })); // may fail
}

void Session::putGeoDataText()
{
    const std::wstring text = anyCode();
    static_cast<void>(
        underFault([&] { return Orvel::WriteGeoDataCoordinateSystem(database(), text.c_str()); })); // may fail
}

void Session::save()
{
    const QeDb::QeDbDwgVersion version = anyVersion();
    if (saves_ == kMostSaves)
        return;
    ++saves_;
    const bool isChecked = !held_; // what someone holds open may be out of the module's reach
    const std::optional<std::wstring> code = isChecked ? storedCode() : std::nullopt;
    const std::optional<std::string> before = contents();
    if (!before)
        return;
    SavedDrawing saved;
    const Qeapp::ErrorStatus result = underFault([&] {
        saved = savedDrawing(*database(), version);
        return saved.status;
    });
    if (result != Qeapp::eOk)
        return requireUnchanged(before, "a save that failed changes nothing");
    requireSameWhenLoaded(*database(), saved.bytes);
    require(isStruck_ || !code || storedCode() == code, "a save in another version keeps the coordinate system");
}

void Session::planFault()
{
    const std::size_t occurrence = source_.byte() + std::size_t{1};
    fault_ = Embedded::FaultPlan{.call = "", .occurrence = occurrence, .fromThenOn = source_.below(2) == 1};
}

} // namespace Fuzz
