// One user's session, whose steps the input decides: what the host does and what the module's clients do, with calls of
// the platform failing in between. After each step the platform holds what it is meant to hold.
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

/// Forbids every change, or none.
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
    /// Ends whatever is under way.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    bool isOver() const { return source_.isEmpty(); }
    void step();

private:
    struct Step {
        void (Session::*make)() = nullptr;
        bool holds = false; // whether it may change what the platform holds
    };
    static const std::vector<Step>& steps();
    struct Reading {
        std::optional<std::string> contents{};
        std::optional<std::wstring> code{};
    };

    // What the host does.
    void startTransaction();
    void commitTransaction();
    void abortTransaction();
    void holdNamedObjects();
    void letGoOfNamedObjects();
    void putForeignXrecord();
    void putDefinitionChain();
    void putLegacyCode();
    void putGeoDataText();
    void save();
    void planFault();

    // What clients of the module do.
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
    void setReactorsMind();
    void setConfiguration();
    void clearConfiguration();
    void findConfigured();

    QeDbDatabase* database() const { return document_->database(); }
    /// The drawing, or null, which means the same one.
    QeDbDatabase* anyArgument() { return source_.below(2) == 0 ? database() : nullptr; }
    std::wstring anyCode();
    QeDb::QeDbDwgVersion anyVersion();

    /// Makes the call with the failure that was planned, if any, and no later one. Afterwards `isStruck_` says whether
    /// a call of the platform did fail. The module's readers take a form that cannot be read for one that is not there,
    /// so that what was stored is asked for only where none did.
    Qeapp::ErrorStatus underFault(const std::function<Qeapp::ErrorStatus()>& call);
    /// Nothing while someone writes.
    std::optional<std::string> contents() const;
    /// Of the coordinate system; empty where there is none, nothing where it cannot be read. It is read again only
    /// where the drawing is another one than at the last reading.
    std::optional<std::wstring> storedCode();
    std::optional<std::wstring> readStoredCode() const;
    void requireUnchanged(const std::optional<std::string>& before, std::string_view promise) const;

    ByteSource source_;
    QeApDocument* document_;
    VetoingReactor reactor_;
    bool isRegistered_ = false;
    std::optional<Embedded::FaultPlan> fault_;
    bool isStruck_ = false;
    Reading lastReading_;
    int saves_ = 0;
    Orvel::NamedObjects held_;
    std::vector<std::string> snapshots_; // one for each transaction that is active
};

} // namespace Fuzz
