// Classes that a client of the module derives from the public ones.
#pragma once

#include "transformation/config_items.h"

namespace Tests {

/// A client's item, which writes its own text and inherits its disposal.
class ClientItem : public ConfigItem {
public:
    ClientItem() = default;
    ~ClientItem() override = default;
    void SetSourceCs(const wchar_t*) override {}
    const wchar_t* GetSourceCs() override { return L"source"; }
    void SetTargetCs(const wchar_t*) override {}
    const wchar_t* GetTargetCs() override { return L"target"; }
    void SetName(const wchar_t*) override {}
    const wchar_t* GetName() override { return L"name"; }
    void SetType(int) override {}
    int GetType() override { return 1; }
    void SetNote(const wchar_t*) override {}
    const wchar_t* GetNote() override { return L"note"; }
    void SetVersion(const wchar_t*) override {}
    const wchar_t* GetVersion() override { return L"version"; }
    std::wstring ToXmlString() override { return L"written by the client"; }
    void FromXmlString(const wchar_t*) override {}
};

/// A client's empty collection.
class ClientCollection : public ConfigCollection {
public:
    ClientCollection() = default;
    ~ClientCollection() override = default;
    void Add(ConfigItem*) override {}
    void Clear() override {}
    int GetCount() override { return 0; }
    FqDisposable* GetItem(int) override { return nullptr; }
    std::wstring ToXmlString() override { return {}; }
    void FromXmlString(const wchar_t*) override {}
};

} // namespace Tests
