// Prints the drawing model in the form in which the host prints a drawing, without using the code of the host.
#include <charconv>
#include <cstdio>
#include <sstream>

#include "host/database/drawing_model.h"
#include "host/database/model_values.h"

namespace Tests {
namespace {

using Number = DrawingModel::Number;

std::string hex(Number number)
{
    std::ostringstream text;
    text << std::hex << std::uppercase << number;
    return text.str();
}

/// The texts of the model need no escapes.
std::string quoted(const std::wstring& text)
{
    return '"' + std::string(text.begin(), text.end()) + '"';
}

std::string printReal(double real)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, real).ptr};
}

std::string printValue(int code, int number)
{
    switch (qeutValueKind(code)) {
    case QeRb::ValueKind::string:
        return quoted(std::to_wstring(number));
    case QeRb::ValueKind::binary: {
        std::string text = "x";
        for (int shift = 0; shift < 32; shift += 8) {
            char digits[3] = {};
            std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(number) >> shift & 0xFFU);
            text += digits;
        }
        return text;
    }
    case QeRb::ValueKind::real:
        return printReal(number / kModelScale);
    default:
        return std::to_string(number);
    }
}

std::string printValues(const std::string& field, const DrawingModel::Values& values)
{
    std::string text;
    for (const auto& [code, number] : values)
        text += "  " + field + " " + std::to_string(code) + " " + printValue(code, number) + "\n";
    return text;
}

std::string className(DrawingModel::Kind kind, Number number)
{
    using enum DrawingModel::Kind;
    switch (kind) {
    case dictionary:
        return "QeDbDictionary";
    case xrecord:
        return "QeDbXrecord";
    case application:
        return "QeDbRegAppTableRecord";
    case geoData:
        return "QeDbGeoData";
    case fixture:
        break;
    }
    return number == DrawingModel::kRegAppTable  ? "QeDbRegAppTable"
           : number == DrawingModel::kBlockTable ? "QeDbBlockTable"
                                                 : "QeDbBlockTableRecord";
}

} // namespace

std::string DrawingModel::print(Number number) const
{
    const Object& object = objects_.at(number);
    std::string text = "object " + hex(number) + " " + className(object.kind, number);
    text += object.owner != 0 ? " of " + hex(object.owner) + "\n" : "\n";
    for (const auto& [key, entry] : object.entries)
        text += "  entry " + quoted(key) + " " + hex(entry) + "\n";
    text += printValues("value", object.values);
    if (object.kind == Kind::application)
        text += "  name " + quoted(object.text) + "\n";
    if (object.kind == Kind::geoData)
        text += "  coordinate system " + quoted(object.text) + "\n  block " + hex(object.owner) + "\n";
    if (number == kModelSpace)
        text += "  name \"*Model_Space\"\n";
    if (number == kBlockTable)
        text += "  record " + hex(kModelSpace) + "\n";
    if (number == kRegAppTable) {
        for (const auto& [name, record] : applications())
            text += "  record " + hex(record) + "\n";
    }
    for (const auto& [name, record] : applications()) {
        if (const auto data = object.extendedData.find(record); data != object.extendedData.end())
            text += printValues("extended data of " + quoted(objects_.at(record).text), data->second);
    }
    return text;
}

std::string DrawingModel::print() const
{
    const DrawingModel state = savedState();
    std::string text = "drawing version 33\nnext handle " + hex(nextNumber_) + "\n";
    for (const auto& [number, object] : state.objects_)
        text += state.print(number);
    return text;
}

} // namespace Tests
