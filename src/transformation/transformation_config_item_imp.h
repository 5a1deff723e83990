// The item behind the public class.
#pragma once

#include <string>

#include "coordsys/orvel_transformation_config_item.h"
#include "transformation/item_text.h"
#include "transformation/short_text.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

class OrvelTransformationConfigItemImp final : public OrvelTransformationConfigItem {
public:
    OrvelTransformationConfigItemImp() = default;

    void Dispose() override;
    void SetSourceCs(const wchar_t* code) override { sourceCs_.assign(code); }
    const wchar_t* GetSourceCs() override { return sourceCs_.c_str(); }
    void SetTargetCs(const wchar_t* code) override { targetCs_.assign(code); }
    const wchar_t* GetTargetCs() override { return targetCs_.c_str(); }
    void SetName(const wchar_t* name) override { name_ = name; }
    const wchar_t* GetName() override { return name_.c_str(); }
    void SetType(int type) override { type_ = type; }
    int GetType() override { return type_; }
    void SetNote(const wchar_t* note) override { note_ = note; }
    const wchar_t* GetNote() override { return note_.c_str(); }
    void SetVersion(const wchar_t* version) override { version_ = version; }
    const wchar_t* GetVersion() override { return version_.c_str(); }
    std::wstring ToXmlString() override;
    void FromXmlString(const wchar_t* text) override;
    /// Takes over the fields that have a value. They must not be parts of the item's own fields.
    void setFields(const ::Orvel::ItemText& fields);

protected:
    ~OrvelTransformationConfigItemImp() override;

private:
    ::Orvel::ShortText sourceCs_;
    ::Orvel::ShortText targetCs_;
    std::wstring name_;
    std::wstring note_;
    std::wstring version_{L'1', L'.', L'0'};
    int type_ = 0;
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
