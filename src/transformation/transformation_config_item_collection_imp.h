// The collection behind the public class.
#pragma once

#include <string>

#include "coordsys/orvel_transformation_config_item_collection.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// The foundation's collection as a class that can be instantiated.
class ConfigItemCollectionStore final : public FqDisposableCollection {
public:
    ConfigItemCollectionStore() = default;

protected:
    ~ConfigItemCollectionStore() override;
};

class OrvelTransformationConfigItemCollectionImp final : public OrvelTransformationConfigItemCollection {
public:
    OrvelTransformationConfigItemCollectionImp();

    void Dispose() override;
    void Add(OrvelTransformationConfigItem* item) override;
    void Clear() override;
    int GetCount() override;
    FqDisposable* GetItem(int index) override;
    std::wstring ToXmlString() override;
    void FromXmlString(const wchar_t* text) override;

protected:
    ~OrvelTransformationConfigItemCollectionImp() override;

private:
    Ptr<FqDisposableCollection> items_;
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
