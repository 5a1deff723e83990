// The drawing, the user's settings and the reactor that a call works on. Each point of the sweep has its own fixture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/host/application/application.h"
#include "support/scoped_document.h"
#include "support/scoped_registry.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"
#include "sweep/counting_reactor.h"

namespace Tests {

/// The state in which a fixture begins. All points of a scenario share one.
struct InitialState {
    std::string drawing;                       // the bytes of its file
    std::optional<std::string> settingsFile{}; // the bytes of the file
    std::vector<std::wstring> registryValues{};
    std::optional<std::string> savedDrawing{}; // the bytes of the file that is saved over
    bool usesRegistry = false;
    bool hasReactor = false;
    Veto veto = Veto::none;
    bool isLockedElsewhere = false; // whether another user locks the document all the time
};

/// Everything that a call may change, as values to compare.
struct StoredState {
    std::string drawing; // the text of `drawingContents`
    std::optional<std::string> settingsFile;
    std::vector<std::wstring> registryValues;
    std::optional<std::string> savedDrawing;
    friend bool operator==(const StoredState&, const StoredState&) = default;
};

/// Describes the parts that differ; empty for equal states.
std::string describeDifference(const StoredState& left, const StoredState& right);

/// Compares the contents without handles. Of a saved drawing only its existence is compared.
bool haveSameContents(const StoredState& left, const StoredState& right);

class Fixture {
public:
    Fixture(const InitialState& initialState, const TemporaryFolder& folder);
    Fixture(const Fixture&) = delete;
    Fixture& operator=(const Fixture&) = delete;
    ~Fixture();

    QeDbDatabase* database() const { return document_.database(); }
    const std::filesystem::path& drawingFile() const { return drawingFile_; }
    CountingReactor& reactor() { return reactor_; }
    StoredState storedState() const;
    /// Whether the drawing has none of the three forms of a coordinate system.
    bool hasNoSystem() const;

private:
    std::filesystem::path settingsFile() const { return folder_ / "TransformationSetting.xml"; }
    void storeRegistryValues(const std::vector<std::wstring>& values) const;

    std::filesystem::path folder_;
    std::filesystem::path drawingFile_;
    bool hasReactor_;
    std::optional<ScopedRegistry> registry_;
    ScopedVariable userFolder_;
    ScopedDocument document_;
    std::optional<Embedded::ForeignDocumentLock> otherLock_;
    CountingReactor reactor_;
};

} // namespace Tests
