// Writes SVG: elements with escaped text and numbers of a fixed number of digits, the same bytes each time.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Orvelcs {

/// A number as SVG has it: two digits behind the point, without those that are zero, and never "-0".
std::string svgNumber(double number);

/// The text with what XML has a meaning for escaped. Characters that XML cannot hold
/// become U+FFFD.
std::string escapeXml(std::string_view utf8);

/// The value of an attribute: a text, or a number.
class SvgValue {
public:
    SvgValue(std::string_view text) : text_(text) {}
    SvgValue(const char* text) : text_(text) {}
    SvgValue(const std::string& text) : text_(text) {}
    SvgValue(double number) : text_(svgNumber(number)) {}

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

using SvgAttributes = std::vector<std::pair<std::string_view, SvgValue>>;

class SvgWriter {
public:
    /// Begins an element, which `close` ends.
    void open(std::string_view name, const SvgAttributes& attributes = {});
    void close();
    /// Writes an element without contents.
    void element(std::string_view name, const SvgAttributes& attributes);
    /// Writes an element with a text.
    void text(std::string_view name, const SvgAttributes& attributes, std::string_view utf8);
    /// Writes a style sheet, which must not hold characters that XML has a meaning for.
    void style(std::string_view sheet);

    /// Adds what another has written.
    void append(const SvgWriter& other) { svg_ += other.result(); }

    /// All that was written. Every element must be closed.
    const std::string& result() const { return svg_; }

private:
    void begin(std::string_view name, const SvgAttributes& attributes);

    std::string svg_;
    std::vector<std::string> opened_;
};

/// The root element that stands alone in a file: with a view box, and the title and the description that a screen
/// reader reads. `sheet` is its style sheet. `close` ends it.
void openSvg(SvgWriter& svg, double width, double height, std::string_view title, std::string_view description,
             std::string_view sheet);

} // namespace Orvelcs
