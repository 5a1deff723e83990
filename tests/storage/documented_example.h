// The examples on the pages about formats. Tests compare them with the bytes and texts that the module reads and
// writes.
#pragma once

#include <string>

#include "support/chain.h"

namespace Tests {

/// The fenced block with a label, on a page under docs/formats.
class DocumentedExample {
public:
    /// Throws when there is no such page or block.
    DocumentedExample(const std::string& page, const std::string& label);

    /// The text of the block without its last line end.
    const std::string& text() const { return text_; }
    /// The block as pairs of hexadecimal digits. A semicolon begins a remark.
    Bytes bytes() const;
    /// One item a line: a group code and a number, a "text" or hexadecimal digits, which lines that begin with a blank
    /// continue.
    Items chain() const;

    /// The message for a page that is out of date, with the text that it should have.
    std::string correction(const std::string& block) const;

private:
    std::string page_;
    std::string label_;
    std::string text_;
};

/// Formats a value as the examples do.
std::string printed(const Bytes& bytes);
std::string printed(const Items& chain);

} // namespace Tests
