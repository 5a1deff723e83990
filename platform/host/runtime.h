// The host's runtime: class descriptors, the system registry, the dynamic linker and application messages.
#pragma once

#include "../export.h"
#include "error_status.h"

/// A class descriptor. Each class has one, so that descriptors are compared by address.
class QEHOST_API QeRxClass {
public:
    QeRxClass(const wchar_t* name, const QeRxClass* parent) : name_(name), parent_(parent) {}
    QeRxClass(const QeRxClass&) = delete;
    QeRxClass& operator=(const QeRxClass&) = delete;

    const wchar_t* name() const { return name_; }
    const QeRxClass* parent() const { return parent_; }
    /// Returns whether this class is `ancestor` or derives from it. False for null.
    bool isDerivedFrom(const QeRxClass* ancestor) const;

private:
    const wchar_t* name_;
    const QeRxClass* parent_;
};

/// Declares the descriptor of a class and the query for that of an object.
#define QERX_DECLARE_CLASS()                                                                                           \
    static QeRxClass* desc();                                                                                          \
    QeRxClass* isA() const override

/// The root of the host's classes.
class QEHOST_API QeRxObject {
public:
    virtual ~QeRxObject();
    QeRxObject(const QeRxObject&) = delete;
    QeRxObject& operator=(const QeRxObject&) = delete;

    static QeRxClass* desc();
    virtual QeRxClass* isA() const;
    bool isKindOf(const QeRxClass* ancestor) const { return isA()->isDerivedFrom(ancestor); }

protected:
    QeRxObject() = default;
};

/// A dictionary of runtime objects by name. It does not own them.
class QEHOST_API QeRxDictionary : public QeRxObject {
public:
    QERX_DECLARE_CLASS();
    /// The object under the key, or null.
    virtual QeRxObject* at(const wchar_t* key) const = 0;
    /// Puts the object under the key and returns the former object, or null.
    virtual QeRxObject* atPut(const wchar_t* key, QeRxObject* object) = 0;
    /// Removes the key and returns its object, or null.
    virtual QeRxObject* remove(const wchar_t* key) = 0;
};

/// The key of the dynamic linker in the system registry.
inline constexpr const wchar_t* kQeRxDynamicLinkerKey = L"DynamicLinker";

/// Loads and unloads modules. A module that has not unlocked itself stays loaded.
class QEHOST_API QeRxDynamicLinker : public QeRxObject {
public:
    QERX_DECLARE_CLASS();
    /// Allows the module of `appHandle` to be unloaded on demand. False for an unknown handle.
    virtual bool unlockApplication(void* appHandle) = 0;
};

/// Messages to a module's entry point.
namespace QeRx {
enum AppMsgCode : int { kNullMsg = 0, kInitAppMsg = 1, kUnloadAppMsg = 2, kLoadDwgMsg = 3, kUnloadDwgMsg = 4 };
enum AppRetCode : int { kRetOK = 0, kRetError = 3 };
} // namespace QeRx

/// The host API version that a module built with these headers returns.
inline constexpr int kQeRxApiVersion = 0x00180000;

/// The dictionary of system services. Never null.
QEHOST_API QeRxDictionary* qerxSysRegistry();

/// Declares that the module of `appHandle` supports several open documents. False for an unknown handle.
QEHOST_API bool qerxRegisterAppMDIAware(void* appHandle);
