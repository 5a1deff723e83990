#include "embedded/host/drawing_file/drawing_dump.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <map>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/hex.h"
#include "embedded/base/text.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/extended_data.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/save_plan.h"
#include "embedded/host/database/symbol_table.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace Embedded {
namespace {

using QeHost::ObjectRecord;

/// What would end the line or is no character is written as its number.
std::string quote(std::wstring_view wide)
{
    std::string text = "\"";
    for (std::size_t at = 0; at < wide.size(); ++at) {
        std::wstring_view character = wide.substr(at, 1);
        if (!isWellFormed(character) && isWellFormed(wide.substr(at, 2)) && at + 1 < wide.size())
            character = wide.substr(at++, 2);
        const auto number = static_cast<unsigned long>(character.front());
        if (number == '"' || number == '\\') {
            text += '\\';
            text += static_cast<char>(number);
        } else if (number < 0x20 || number == 0x7F || !isWellFormed(character)) {
            text += number <= 0xFFFF ? "\\u" : "\\U";
            text += lowerCaseHex(number, number <= 0xFFFF ? 4 : 8);
        } else {
            text += utf8FromWide(character);
        }
    }
    return text + '"';
}

std::string formatReal(double real)
{
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), real);
    std::string text(digits.data(), written.ptr);
    if (real == real)
        return text;
    return text + " (" + lowerCaseHex(std::bit_cast<std::uint64_t>(real), 16) + ")";
}

std::string formatValue(const ResbufValue& value)
{
    if (const auto* text = std::get_if<std::wstring>(&value.value))
        return quote(*text);
    if (const auto* real = std::get_if<double>(&value.value))
        return formatReal(*real);
    if (const auto* integer = std::get_if<std::int32_t>(&value.value))
        return std::to_string(*integer);
    const auto& bytes = std::get<std::vector<unsigned char>>(value.value);
    return "x" + hexFromBytes({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

/// Prints the fields of one object, and finds what it owns.
class FieldPrinter final : public QeHost::FieldVisitor {
public:
    FieldPrinter(std::string& text, const QeDbObject& object) : text_(text), object_(object) {}

    void text(std::string_view field, std::wstring& text) override { line(field, quote(text)); }

    void reference(std::string_view field, QeDbObjectId& object) override
    {
        line(field, formatHandle(object.handle()));
    }

    void values(ResbufValues& values) override { lines("value", values); }

    void entries(QeHost::DictionaryEntries& entries) override
    {
        for (const auto& [key, entry] : entries.all()) {
            if (!QeHost::isLive(entry))
                continue;
            line("entry", quote(key) + " " + formatHandle(entry->handle));
            owned_.push_back(entry);
        }
    }

    void records(std::vector<ObjectRecord*>& records) override
    {
        for (ObjectRecord* const record : records) {
            if (QeHost::isLive(record))
                owned_.push_back(record);
        }
        std::sort(owned_.begin(), owned_.end(), [](const ObjectRecord* left, const ObjectRecord* right) {
            return toLowerAscii(QeHost::recordName(*left)) < toLowerAscii(QeHost::recordName(*right));
        });
        for (const ObjectRecord* const record : owned_)
            line("record", formatHandle(record->handle));
    }

    void extendedData(QeHost::ExtendedData& /*data*/) override
    {
        for (const auto& [application, values] : QeHost::extendedDataByName(object_))
            lines("extended data of " + quote(application), values);
    }

    const std::vector<ObjectRecord*>& owned() const { return owned_; }

private:
    void line(std::string_view field, const std::string& value)
    {
        text_.append("  ").append(field).append(" ").append(value).append("\n");
    }

    void lines(std::string_view field, const ResbufValues& values)
    {
        for (const ResbufValue& value : values)
            line(field, std::to_string(value.code) + " " + formatValue(value));
    }

    std::string& text_;
    const QeDbObject& object_;
    std::vector<ObjectRecord*> owned_;
};

std::string dump(QeHost::DatabaseImp& database)
{
    std::map<Handle, std::string> texts;
    std::vector<ObjectRecord*> next{database.namedObjects, database.regAppTable, database.blockTable};
    if (ObjectRecord* const geoData = database.geoData()) {
        QeHost::loadObject(*geoData); // and so its owners
        if (QeHost::geoDataInDrawing(database) != nullptr)
            next.push_back(geoData);
    }
    while (!next.empty()) {
        ObjectRecord& objectRecord = *next.back();
        next.pop_back();
        const QeDbObject& object = QeHost::loadObject(objectRecord);
        std::string& text = texts[objectRecord.handle];
        QeHost::ObjectState& state = *object.imp().state;
        text = "object " + formatHandle(objectRecord.handle) + " " + utf8FromWide(object.isA()->name());
        text += state.owner != nullptr ? " of " + formatHandle(state.owner->handle) + "\n" : "\n";
        FieldPrinter printer(text, object);
        state.visitAll(printer);
        next.insert(next.end(), printer.owned().begin(), printer.owned().end());
    }
    std::string text = "drawing version " + std::to_string(database.version) + "\nnext handle " +
                       formatHandle(database.nextHandle) + "\n";
    for (const auto& [handle, lines] : texts)
        text += lines;
    return text;
}

} // namespace

Expected<std::string> dumpDrawing(const QeDbDatabase& database)
{
    if (const Expected<void> loading = loadingResult(database); !loading)
        return failure(loading.error());
    return catchError([&] { return dump(database.imp()); });
}

} // namespace Embedded
