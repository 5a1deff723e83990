// An SDK with names, layouts and habits of its own, which the headers in ../platform give the names that the module
// uses. It is as loose as docs/porting.md allows: results of any width, void or a class where a result is not looked
// at, further parameters, overloads, bases and virtual functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

namespace Product {

enum Outcome : short {
    Fine = 0,
    DoesNotApply = 2,
    BadArgument = 1003,
    NoMemory = -6,
    BadList = 1007,
    NoUndo = 1008,
    Missing = 1015,
    NullHandle = 1016,
    Erased = 1017,
    NoSuchKey = 1022,
    WrongClass = 1026,
    BadFormat = 1037,
    NoDrawing = 124,
    Refused = 325
};

/// The result of calls that seldom fail. It cannot be copied.
struct [[nodiscard]] Receipt {
    Receipt(const Receipt&) = delete;
    Receipt& operator=(const Receipt&) = delete;
    virtual ~Receipt();
    explicit operator bool() const;
};

class Named {
public:
    virtual ~Named();
    virtual const wchar_t* name(int language = 0) const;
};

class Counted {
public:
    virtual unsigned long hold() const;
    virtual unsigned long drop() const;

protected:
    virtual ~Counted();
};

class Type;

class Thing {
public:
    virtual ~Thing();
    virtual const Type* type() const;
    virtual bool isKindOf(const Type* type) const;
    bool isKindOf(const wchar_t* typeName) const;
};

class Loader : public Thing, public Counted {
public:
    static Type* desc(bool makes = true);
    virtual void unlockApplication(void* handle);
    bool isKindOf(const Type* type) const override;
};

class Registry : public Thing {
public:
    virtual Thing* at(const wchar_t* key, bool ignoresCase = false) const;
    Thing* at(int index) const;
};

struct Bytes {
    short clen;
    short reserved;
    char* buf;
};

/// The members lie in another order, and there are more of them.
struct ListItem {
    union Value {
        double real;
        double point[3];
        short shortNumber;
        std::int32_t rlong;
        wchar_t* rstring;
        Bytes rbinary;
    };
    short restype;
    unsigned short flags;
    Value resval;
    ListItem* rbnext;
    ListItem* previous;
};

class Drawing;

/// An id that is compared, converted and made from a number.
class Handle {
public:
    Handle(std::uint64_t value = 0) : value_(value) {}
    bool isNull() const { return value_ == 0; }
    operator std::uint64_t() const { return value_; }

private:
    std::uint64_t value_;
};

class Watcher {
public:
    virtual void changed(class Stored* object);
};

/// The base of the objects of a drawing. It allocates them itself.
class Stored : public Thing, public Counted {
public:
    Stored();
    Stored(const Stored&);
    ~Stored() override;
    static void* operator new(std::size_t lengthInBytes);
    static void* operator new(std::size_t lengthInBytes, const std::nothrow_t&) noexcept;
    static void operator delete(void* memory) noexcept;
    virtual Handle objectId() const;
    virtual Drawing* database() const;
    virtual Receipt addReactor(Watcher* watcher, int priority = 0) const;
    virtual void close(bool keepsUndo = true);
    virtual Outcome upgradeOpen();
    virtual ListItem* xData(const wchar_t* application = nullptr) const;
    virtual Outcome setXData(const ListItem* list, bool replaces = true);
};

class Container : public Stored {
public:
    virtual bool has(const wchar_t* key) const;
    bool has(Handle id) const;
};

} // namespace Product
