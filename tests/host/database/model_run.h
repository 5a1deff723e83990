// Makes random operations on a drawing and on its model, whose results must agree. The drawing is open in a file. It is
// saved there at random moments, and at others closed without a save and opened again.
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
    /// Creates the file.
    ModelRun(std::uint64_t seed, std::filesystem::path file);
    ~ModelRun();
    ModelRun(const ModelRun&) = delete;
    ModelRun& operator=(const ModelRun&) = delete;

    /// Makes one operation. Reports a failure and returns false when drawing and model differ.
    bool step();
    /// Compares every object.
    bool compare();
    /// How often each operation was made and how often it succeeded, by its name.
    const std::map<std::string, std::pair<long, long>>& counts() const { return counts_; }

private:
    using Number = DrawingModel::Number;
    using Kind = DrawingModel::Kind;

    /// An object that this run has open.
    struct Open {
        Number number = 0;
        bool write = false;
        QeDbObject* object = nullptr;
    };

    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    bool chance(std::uint64_t percent) { return below(100) < percent; }
    std::wstring randomKey() { return std::wstring(1, static_cast<wchar_t>(L'a' + below(6))); }
    std::wstring randomApplicationName();
    DrawingModel::Values randomValues(const std::vector<int>& codes);
    Number randomObject(Kind kind);
    Number randomObject();

    /// Counts the operation and compares its status with that of the model.
    bool expectStatus(const char* operation, Qeapp::ErrorStatus actual, Qeapp::ErrorStatus expected);
    std::optional<Open> openNew(Number number, bool write, bool openErased);
    /// Mostly returns an existing open of the object, otherwise a new one.
    std::optional<Open> openOrReuse(Number number);
    void close(const Open& open);
    void closeSometimes(const Open& open);
    /// Registers an object that was just created and is open for write.
    void addCreated(QeDbObject* object);

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

    /// The id of the object, which is looked up through its owners if it is not known yet.
    QeDbObjectId idOf(Number number);
    QeDbObjectId findId(Number number);
    void rememberId(Number number);
    void load();
    /// The other drawing must have the saved state of the model.
    void expectSaved(const QeDbDatabase& other);
    void closeAll();
    void closeUndoneObjects();
    void rememberRootIds();
    /// Compares what is cheap enough to compare after every step.
    bool compareSummary();
    bool compareObject(Number number, const DrawingModel::Object& expected);
    bool compareContents(const QeDbObject& object, const DrawingModel::Object& expected);
    bool compareEntries(const QeDbDictionary& dictionary, Number number);
    bool compareExtendedData(const QeDbObject& object, const DrawingModel::Object& expected);

    std::mt19937_64 random_;
    std::filesystem::path file_;
    DrawingModel model_;
    DrawingModel saved_; // the state in the file
    std::unique_ptr<QeDbDatabase> database_;
    std::map<Number, QeDbObjectId> ids_; // the ids that are known since the drawing was opened
    std::vector<Open> opens_;
    std::map<std::string, std::pair<long, long>> counts_;
    bool agrees_ = true;
};

} // namespace Tests
