#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "embedded/host/drawing_file.h"
#include "embedded/host/drawing_format.h"
#include "embedded/host/drawing_scalars.h"

namespace Embedded {
namespace {

using nlohmann::json;

/// The value on one line, with a space after each comma and colon.
std::string lineOf(const json& value)
{
    if (!value.is_structured())
        return value.dump();
    std::string line;
    for (const auto& [name, item] : value.items()) {
        line += line.empty() ? "" : ", ";
        line += (value.is_object() ? json(name).dump() + ": " : "") + lineOf(item);
    }
    return value.is_object() ? "{" + line + "}" : "[" + line + "]";
}

/// Lays the file out by hand, one entry and one value a line, so that a changed drawing reads well in a comparison.
class DrawingTextWriter {
public:
    std::string textOf(const DrawingImage& image);

private:
    template <class Item, class Write>
    void list(const std::vector<Item>& items, const char* indentation, Write write);
    void field(const char* name, const json& value);
    void object(const ObjectImage& object);
    void chain(const ImageChain& chain, const char* indentation);
    void value(const ImageValue& value);

    void contents(const DictionaryImage& dictionary);
    void contents(const XrecordImage& record) { chain(record.chain, "    "); }
    void contents(const RegAppTableImage& table) { records(table.records); }
    void contents(const RegAppRecordImage& record) { field("name", jsonFromText(record.name)); }
    void contents(const BlockTableImage& table) { records(table.records); }
    void contents(const BlockRecordImage& record) { field("name", jsonFromText(record.name)); }
    void contents(const GeoDataImage& geoData);
    void records(const std::vector<Handle>& handles);
    void extendedData(const ObjectImage& object);

    std::string text_;
};

template <class Item, class Write>
void DrawingTextWriter::list(const std::vector<Item>& items, const char* indentation, Write write)
{
    text_ += '[';
    const char* separator = "";
    for (const Item& item : items) {
        text_.append(separator).append("\n").append(indentation).append("  ");
        write(item);
        separator = ",";
    }
    if (!items.empty())
        text_.append("\n").append(indentation);
    text_ += ']';
}

void DrawingTextWriter::field(const char* name, const json& value)
{
    text_.append(", \"").append(name).append("\": ").append(lineOf(value));
}

void DrawingTextWriter::value(const ImageValue& value)
{
    struct Form {
        json operator()(const std::wstring& text) const { return jsonFromText(text); }
        json operator()(const std::vector<unsigned char>& bytes) const { return hexFromBytes(bytes); }
        json operator()(double real) const { return jsonFromReal(real); }
        json operator()(std::int32_t integer) const { return integer; }
    };
    const bool binary = std::holds_alternative<std::vector<unsigned char>>(value.value);
    text_.append("{\"code\": ").append(std::to_string(value.code));
    field(binary ? "hex" : "value", std::visit(Form{}, value.value));
    text_ += '}';
}

void DrawingTextWriter::chain(const ImageChain& chain, const char* indentation)
{
    text_ += ", \"chain\": ";
    list(chain, indentation, [this](const ImageValue& item) { value(item); });
}

void DrawingTextWriter::contents(const DictionaryImage& dictionary)
{
    text_ += ", \"entries\": ";
    list(dictionary.entries, "    ", [this](const std::pair<std::wstring, Handle>& entry) {
        text_.append("{\"key\": ").append(lineOf(jsonFromText(entry.first)));
        field("id", textFromHandle(entry.second));
        text_ += '}';
    });
}

void DrawingTextWriter::contents(const GeoDataImage& geoData)
{
    field("block", textFromHandle(geoData.block));
    field("coordinateSystem", jsonFromText(geoData.coordinateSystem));
}

void DrawingTextWriter::records(const std::vector<Handle>& handles)
{
    json texts = json::array();
    for (const Handle handle : handles)
        texts.push_back(textFromHandle(handle));
    field("records", texts);
}

void DrawingTextWriter::extendedData(const ObjectImage& object)
{
    if (object.extendedData.empty())
        return;
    text_ += ", \"extendedData\": ";
    list(object.extendedData, "    ", [this](const std::pair<std::wstring, ImageChain>& data) {
        text_.append("{\"application\": ").append(lineOf(jsonFromText(data.first)));
        chain(data.second, "      ");
        text_ += '}';
    });
}

void DrawingTextWriter::object(const ObjectImage& object)
{
    text_.append("{\"handle\": ").append(json(textFromHandle(object.handle)).dump());
    if (object.owner != 0)
        field("owner", textFromHandle(object.owner));
    field("class", DrawingFormat::kClassNames[object.contents.index()]);
    std::visit([this](const auto& held) { contents(held); }, object.contents);
    extendedData(object);
    text_ += '}';
}

std::string DrawingTextWriter::textOf(const DrawingImage& image)
{
    const auto line = [this](const char* name, const json& value) {
        text_.append("  \"").append(name).append("\": ").append(lineOf(value)).append(",\n");
    };
    text_ = "{\n";
    line("format", DrawingFormat::kName);
    line("formatVersion", DrawingFormat::kVersion);
    line("drawingVersion", image.drawingVersion);
    line("nextHandle", textFromHandle(image.nextHandle));
    line("namedObjects", textFromHandle(image.namedObjects));
    line("regAppTable", textFromHandle(image.regAppTable));
    line("blockTable", textFromHandle(image.blockTable));
    text_ += "  \"objects\": ";
    list(image.objects, "  ", [this](const ObjectImage& item) { object(item); });
    text_ += "\n}\n";
    return std::move(text_);
}

} // namespace

std::string drawingTextFrom(const DrawingImage& image)
{
    return DrawingTextWriter().textOf(image);
}

} // namespace Embedded
