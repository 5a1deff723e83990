// Random operations made on a drawing and on its model at once; every answer has to be the same. The drawing is open in
// a file: it is saved there at random moments, and at others let go of and opened again as it was saved.
#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "host/database/drawing_model.h"
#include "platform/host.h"

namespace Tests {

class ModelRun {
public:
    /// `file` is made.
    ModelRun(std::uint64_t seed, std::filesystem::path file);
    ~ModelRun();
    ModelRun(const ModelRun&) = delete;
    ModelRun& operator=(const ModelRun&) = delete;

    /// Makes one operation. False, after a failure was reported, when drawing and model differ.
    bool step();
    /// Compares every object.
    bool compare();
    /// How often each operation was made and how often it succeeded, by name.
    const std::map<std::string, std::pair<long, long>>& tally() const { return tally_; }

private:
    using Number = DrawingModel::Number;
    using Kind = DrawingModel::Kind;

    /// One open of an object, by this run.
    struct Open {
        Number number = 0;
        bool write = false;
        QeDbObject* object = nullptr;
    };

    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    bool chance(std::uint64_t percent) { return below(100) < percent; }
    std::wstring key() { return std::wstring(1, static_cast<wchar_t>(L'a' + below(6))); }
    std::wstring applicationName();
    DrawingModel::Values values(const std::vector<int>& codes);
    Number anyNumber(Kind kind);
    Number anyNumber();

    /// Notes the answers to one operation; whether they are the same.
    bool agree(const char* operation, Qeapp::ErrorStatus actual, Qeapp::ErrorStatus expected);
    std::optional<Open> openNew(Number number, bool write, bool openErased);
    /// An open of the object that there is already, most of the time; otherwise a new one.
    std::optional<Open> openSome(Number number);
    void close(const Open& open);
    void maybeClose(const Open& open);
    /// Takes note of an object that was created and is open for write.
    void created(QeDbObject* object);

    void stepOpen();
    void stepClose();
    void stepUpgrade();
    void stepErase();
    void stepWrite();
    void stepExtendedData();
    void stepSetAt();
    void stepRemove();
    void stepRegister();
    void stepRename();
    void stepGeoData();
    void stepTransaction();
    void stepSave();
    void stepCopy();
    void stepReopen();

    /// The object's id. Of one that was not met since the drawing was opened it is asked for along its owners.
    QeDbObjectId idOf(Number number);
    QeDbObjectId askFor(Number number);
    void meet(Number number);
    void load();
    /// That the other drawing is what the model says is saved.
    void expectSaved(const QeDbDatabase& other);
    void endEverything();
    void closeUndone();
    void collectRoots();
    bool compareShape();
    bool compareObject(Number number, const DrawingModel::Object& expected);
    bool compareContents(const QeDbObject& object, const DrawingModel::Object& expected);
    bool compareEntries(const QeDbDictionary& dictionary, Number number);
    bool compareExtendedData(const QeDbObject& object, const DrawingModel::Object& expected);

    std::mt19937_64 random_;
    std::filesystem::path file_;
    DrawingModel model_;
    DrawingModel saved_; // what is in the file
    std::unique_ptr<QeDbDatabase> database_;
    std::map<Number, QeDbObjectId> ids_; // of the objects that were met since the drawing was opened
    std::vector<Open> opens_;
    std::map<std::string, std::pair<long, long>> tally_;
    bool same_ = true;
};

} // namespace Tests
