#include "orvelcs/output/svg_writer.h"

#include <cmath>
#include <map>

#include <fmt/format.h>

#include "embedded/base/text.h"

namespace Orvelcs {
namespace {

const std::map<wchar_t, const wchar_t*> kEntities{
    {L'&', L"&amp;"}, {L'<', L"&lt;"}, {L'>', L"&gt;"}, {L'"', L"&quot;"}};

bool isXmlCharacter(wchar_t character)
{
    return character >= L' ' && character != L'\xFFFE' && character != L'\xFFFF';
}

} // namespace

std::string svgNumber(double number)
{
    constexpr double kHundredths = 100;
    const double rounded = std::round(number * kHundredths) / kHundredths;
    std::string text = fmt::format("{:.2f}", rounded == 0 ? 0.0 : rounded);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}

std::string escapeXml(std::string_view utf8)
{
    std::wstring escaped;
    for (const wchar_t character : Embedded::wideFromUtf8(utf8)) {
        if (const auto entity = kEntities.find(character); entity != kEntities.end())
            escaped += entity->second;
        else
            escaped += isXmlCharacter(character) ? character : L'\xFFFD';
    }
    return Embedded::utf8FromWide(escaped);
}

void SvgWriter::begin(std::string_view name, const SvgAttributes& attributes)
{
    svg_.append(opened_.size(), ' ').append("<").append(name);
    for (const auto& [attribute, value] : attributes)
        svg_.append(" ").append(attribute).append("=\"").append(escapeXml(value.text())).append("\"");
}

void SvgWriter::open(std::string_view name, const SvgAttributes& attributes)
{
    begin(name, attributes);
    svg_ += ">\n";
    opened_.emplace_back(name);
}

void SvgWriter::close()
{
    const std::string name = std::move(opened_.back());
    opened_.pop_back();
    svg_.append(opened_.size(), ' ').append("</").append(name).append(">\n");
}

void SvgWriter::element(std::string_view name, const SvgAttributes& attributes)
{
    begin(name, attributes);
    svg_ += "/>\n";
}

void SvgWriter::text(std::string_view name, const SvgAttributes& attributes, std::string_view utf8)
{
    begin(name, attributes);
    svg_.append(">").append(escapeXml(utf8)).append("</").append(name).append(">\n");
}

void SvgWriter::style(std::string_view sheet)
{
    svg_.append("<style>\n").append(sheet).append("</style>\n");
}

void openSvg(SvgWriter& svg, double width, double height, std::string_view title, std::string_view description,
             std::string_view sheet)
{
    svg.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                     {"viewBox", "0 0 " + svgNumber(width) + " " + svgNumber(height)},
                     {"width", width},
                     {"height", height},
                     {"role", "img"},
                     {"aria-labelledby", "title description"}});
    svg.text("title", {{"id", "title"}}, title);
    svg.text("desc", {{"id", "description"}}, description);
    svg.style(sheet);
}

} // namespace Orvelcs
