// What a call is made on: a drawing, a user's settings and a reactor, put up anew for each point of the sweep.
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

/// What a stage begins with; made once for all points of a scenario.
struct Setting {
    std::string drawing;                       // a file in memory
    std::optional<std::string> settingsFile{}; // its bytes
    std::vector<std::wstring> registryValues{};
    std::optional<std::string> savedDrawing{}; // the bytes of the file that is saved over
    bool usesRegistry = false;
    bool hasReactor = false;
    Veto veto = Veto::none;
    bool isLockedElsewhere = false; // the document, by somebody who does not let go
};

/// All that a call may change, as values to compare.
struct Stored {
    std::string drawing; // its contents
    std::optional<std::string> settingsFile;
    std::vector<std::wstring> registryValues;
    std::optional<std::string> savedDrawing;
    friend bool operator==(const Stored&, const Stored&) = default;
};

/// The parts that differ, named.
std::string differenceOf(const Stored& left, const Stored& right);

/// Whether they hold the same, if under other handles; what a saved file holds is not looked into.
bool haveSameContents(const Stored& left, const Stored& right);

class Stage {
public:
    Stage(const Setting& setting, const TemporaryFolder& folder);
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    ~Stage();

    QeDbDatabase* database() const { return document_.database(); }
    const std::filesystem::path& drawingFile() const { return drawingFile_; }
    CountingReactor& reactor() { return reactor_; }
    Stored stored() const;
    /// Whether the drawing has none of the three forms of a coordinate system left.
    bool hasNoSystem() const;

private:
    std::filesystem::path settingsFile() const { return folder_ / "TransformationSetting.xml"; }
    void putRegistryValues(const std::vector<std::wstring>& values) const;

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
