// The examples of the pages about formats, which tests compare with what the module reads and writes.
#pragma once

#include <string>

#include "support/chain.h"

namespace Tests {

/// One fenced block of a page under docs/formats: the one whose opening fence has that label.
class DocumentedExample {
public:
    /// Throws when there is no such page or block.
    DocumentedExample(const std::string& page, const std::string& label);

    /// The text of the block without its last line end.
    const std::string& text() const { return text_; }
    /// Pairs of hexadecimal digits; a line's remark follows a semicolon.
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

/// As an example shows them.
std::string printed(const Bytes& bytes);
std::string printed(const Items& chain);

} // namespace Tests
