// The fixture of tests of one drawing, with functions that fill it.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/host.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {

/// An open object. The end of the scope closes it, which must succeed.
template <class T>
class Opened {
public:
    Opened() = default;
    explicit Opened(T* object) : object_(object) {}
    Opened(Opened&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Opened& operator=(Opened&& other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Opened() { close(); }

    void close()
    {
        if (object_ != nullptr) {
            EXPECT_EQ(std::exchange(object_, nullptr)->close(), Qeapp::eOk);
        }
    }
    T* get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};

using Orvel::ResbufChain;

/// The chain as text, like "1001:KTN 1040:2.5". Chunks are hexadecimal. Empty for null.
std::string textOf(const resbuf* chain);

class DrawingTest : public PlatformTest {
protected:
    Opened<QeDbDictionary> namedObjects(QeDb::OpenMode mode = QeDb::kForRead);
    Opened<QeDbRegAppTable> regAppTable(QeDb::OpenMode mode = QeDb::kForRead);
    Opened<QeDbBlockTable> blockTable(QeDb::OpenMode mode = QeDb::kForRead);
    QeDbObjectId modelSpace();

    /// Each adds a new object to the drawing, closes it and returns its id.
    QeDbObjectId addXrecord(const wchar_t* key, const wchar_t* text = L"text");
    QeDbObjectId addXrecord(QeDbObjectId dictionary, const wchar_t* key, const wchar_t* text = L"text");
    QeDbObjectId addDictionary(const wchar_t* key);
    QeDbObjectId registerApplication(const wchar_t* name);
    QeDbObjectId addBlock(const wchar_t* name);
    QeDbObjectId addGeoData(const wchar_t* text = L"");

    template <class T = QeDbObject>
    Opened<T> open(QeDbObjectId id, QeDb::OpenMode mode = QeDb::kForRead, bool openErased = false)
    {
        T* object = nullptr;
        EXPECT_EQ(qedbOpenObject(object, id, mode, openErased), Qeapp::eOk);
        return Opened<T>(object);
    }

    /// Opens the object and closes it again.
    static Qeapp::ErrorStatus tryOpen(QeDbObjectId id, QeDb::OpenMode mode, bool openErased = false);
    void erase(QeDbObjectId id, bool erasing = true);
    void writeText(QeDbObjectId xrecord, const wchar_t* text);
    std::string contentsOf(QeDbObjectId xrecord);
    /// Everything that the drawing holds, as text.
    std::string contents() const { return Tests::drawingContents(database); }
    /// The keys of the named objects dictionary, as "a b".
    std::wstring keys();

    QeDbTransactionManager& transactions() { return *database.transactionManager(); }
    void begin() { ASSERT_NE(transactions().startTransaction(), nullptr); }
    void commit() { ASSERT_EQ(transactions().endTransaction(), Qeapp::eOk); }
    void abort() { ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk); }

    QeDbDatabase database;
};

} // namespace Tests
