// A page in one file, which loads nothing.
#pragma once

#include <string>

#include "orvelcs/cli/json.h"
#include "orvelcs/output/pages/page_assets.h"
#include "orvelcs/output/svg_writer.h"

namespace Orvelcs {

struct HtmlPage {
    std::string title;
    std::string style; // of the picture, beside that of all pages
    SvgWriter body;    // HTML, whose elements are written as those of SVG are
    PageAsset script;
    Json data = nullptr; // what the script reads
};

/// The browser runs the page's own script only, and loads nothing from anywhere.
std::string writeHtmlPage(const HtmlPage& page);

} // namespace Orvelcs
