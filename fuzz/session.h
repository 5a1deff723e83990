// A session of one user. The input chooses the steps: calls of the host, calls of the module's clients, and failures of
// platform calls. Each step is checked for leaks.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/diagnostics/fault_injection.h"
#include "fuzz/byte_source.h"
#include "storage/host_holders.h"

namespace Fuzz {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

/// Vetoes every change, or none.
class VetoingReactor final : public Cs::OrvelCoordinateSystemReactor {
public:
    bool CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* const) override { return !forbids_; }
    void forbid(bool forbids) { forbids_ = forbids; }

private:
    bool forbids_ = false;
};

class Session {
public:
    explicit Session(Input input);
    /// Ends open transactions and releases everything.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool isOver() const { return source_.isEmpty(); }
    void step();

private:
    struct Step {
        void (Session::*make)() = nullptr;
        bool holds = false; // whether the step may leave something open or allocated
    };
    static const std::vector<Step>& steps();
    struct Reading {
        std::optional<std::string> contents{};
        std::optional<std::wstring> code{};
    };

    // Steps of the host.
    void startTransaction();
    void commitTransaction();
    void abortTransaction();
    void holdNamedObjects();
    void releaseNamedObjects();
    void putForeignXrecord();
    void putDefinitionChain();
    void putLegacyCode();
    void putGeoDataText();
    void save();
    void planFault();

    // Steps of the module's clients.
    void assignCode();
    void assignDefinition();
    void clear();
    void readDefinitions();
    void readDefinition();
    void readCode();
    void applyStorageVersion();
    void serialize();
    void addReactor();
    void removeReactor();
    void setVeto();
    void setConfiguration();
    void clearConfiguration();
    void findConfigured();

    QeDbDatabase* database() const { return document_->database(); }
    /// The drawing, or null for the working drawing, which is the same one.
    QeDbDatabase* nextDatabaseArgument() { return source_.below(2) == 0 ? database() : nullptr; }
    std::wstring nextCode();
    QeDb::QeDbDwgVersion nextVersion();

    /// Makes the call with the planned failure, if there is one. Sets `hasCallFailed_`. The module reads a form that
    /// cannot be read as absent, so the stored system is only checked when no call has failed.
    Qeapp::ErrorStatus callWithFault(const std::function<Qeapp::ErrorStatus()>& call);
    /// Nothing while an object is open for writing.
    std::optional<std::string> contents() const;
    /// The code of the coordinate system: empty for none, nothing if it cannot be read. Reads it again only if the
    /// drawing has changed since the last reading.
    std::optional<std::wstring> storedCode();
    std::optional<std::wstring> readStoredCode() const;
    void requireUnchanged(const std::optional<std::string>& before, std::string_view promise) const;

    ByteSource source_;
    QeApDocument* document_;
    VetoingReactor reactor_;
    bool isRegistered_ = false;
    std::optional<Embedded::FaultPlan> fault_;
    bool hasCallFailed_ = false;
    Reading lastReading_;
    int saves_ = 0;
    Orvel::NamedObjects held_;
    std::vector<std::string> snapshots_; // one for each active transaction
};

} // namespace Fuzz
