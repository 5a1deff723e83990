// A simple model of a drawing. It consists of maps, and copies them for transactions. It shares only the result codes
// with the host.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/host/error_status.h"

namespace Tests {

class DrawingModel {
public:
    using Number = std::uint64_t; // an object's handle
    using Status = Qeapp::ErrorStatus;
    using Values = std::vector<std::pair<int, int>>; // group code and the number that its value is made from

    enum class Kind { dictionary, xrecord, application, geoData, fixture };

    struct Object {
        Kind kind = Kind::xrecord;
        Number owner = 0;
        bool erased = false;
        Values values;                          // of an xrecord
        std::wstring text;                      // an application's name, a GeoData object's text
        std::map<std::wstring, Number> entries; // of a dictionary, erased objects included
        std::map<Number, Values> extendedData;  // by application
        friend bool operator==(const Object&, const Object&) = default;
    };

    static constexpr Number kNamedObjects = 1;
    static constexpr Number kRegAppTable = 2;
    static constexpr Number kBlockTable = 3;
    static constexpr Number kModelSpace = 4;

    DrawingModel();

    Status open(Number number, bool write, bool openErased);
    void close(Number number, bool write);
    Status upgrade(Number number, bool write);
    Status downgrade(Number number, bool write);

    /// `write` says whether the caller has the object open for write.
    Status erase(Number number, bool write, bool erasing);
    Status setValues(Number number, bool write, const Values& values);
    Status setText(Number number, bool write, const std::wstring& text);
    Status setName(Number number, bool write, const std::wstring& name);
    Status setExtendedData(Number number, bool write, const std::wstring& application, const Values& values);
    /// On eOk the new object has the number that nextNumber() was before, and is open for write.
    Status setAt(Number dictionary, bool write, const std::wstring& key, Kind kind);
    Status remove(Number dictionary, bool write, const std::wstring& key);
    Status removeByNumber(Number dictionary, bool write, Number number);
    Status addApplication(bool write, const std::wstring& name);
    Status postGeoData();

    void begin() { snapshots_.emplace_back(objects_, nextNumber_); }
    Status commit();
    Status abort();
    /// The state in a saved file, without erased and removed objects, opens and transactions.
    DrawingModel savedState() const;
    /// The saved state as the host prints a drawing.
    std::string print() const;

    const std::map<Number, Object>& objects() const { return objects_; }
    bool has(Number number) const { return objects_.contains(number); }
    Number nextNumber() const { return nextNumber_; }
    int depth() const { return static_cast<int>(snapshots_.size()); }
    bool isLive(Number number) const;
    bool isOpenForWrite(Number number) const;
    /// These return 0 if there is no such object.
    Number geoData() const;
    Number findApplication(const std::wstring& name) const;
    Number findEntry(Number dictionary, const std::wstring& key) const;
    /// The live entries.
    std::map<std::wstring, Number> entriesOf(Number dictionary) const;

private:
    struct Opens {
        int readers = 0;
        bool writing = false;
    };
    using Objects = std::map<Number, Object>;

    Status conflict(Number number, bool write) const;
    void create(Kind kind, Number owner, const std::wstring& text);
    std::string print(Number number) const;
    /// The live applications, ordered by their names in lower case.
    std::map<std::wstring, Number> applications() const;
    void markReachable(Number number, std::map<Number, bool>& reachable) const;

    Objects objects_;
    Number nextNumber_ = kModelSpace + 1;
    std::vector<std::pair<Objects, Number>> snapshots_;
    std::map<Number, Opens> opens_;
};

} // namespace Tests
