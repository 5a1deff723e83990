// The item behind the public class.
#pragma once

#include <string>
#include <string_view>

#include "coordsys/orvel_transformation_config_item.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

class OrvelTransformationConfigItemImp final : public OrvelTransformationConfigItem {
public:
    OrvelTransformationConfigItemImp() = default;

    void Dispose() override;
    void SetSourceCs(const wchar_t* code) override { sourceCs_ = code; }
    const wchar_t* GetSourceCs() override { return sourceCs_.c_str(); }
    void SetTargetCs(const wchar_t* code) override { targetCs_ = code; }
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
    /// The same for a part of a longer text, which must not be one of the item's own fields.
    void fromXmlText(std::wstring_view text);

protected:
    ~OrvelTransformationConfigItemImp() override;

private:
    std::wstring sourceCs_;
    std::wstring targetCs_;
    std::wstring name_;
    std::wstring note_;
    std::wstring version_ = L"1.0";
    int type_ = 0;
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
