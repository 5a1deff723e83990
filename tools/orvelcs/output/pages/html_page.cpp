#include "orvelcs/output/pages/html_page.h"

#include <fmt/format.h>

#include "orvelcs/output/pages/base64.h"

namespace Orvelcs {
namespace {

/// What a Content-Security-Policy calls the script.
std::string scriptSource(const PageAsset& script)
{
    constexpr std::size_t kDigitsOfAByte = 2; // of a byte
    constexpr int kHexadecimal = 16;
    std::string digest;
    for (std::size_t index = 0; index < script.sha256.size(); index += kDigitsOfAByte)
        digest += static_cast<char>(
            std::stoi(std::string(script.sha256.substr(index, kDigitsOfAByte)), nullptr, kHexadecimal));
    return "'sha256-" + encodeBase64(digest) + "'";
}

/// JSON that does not end the element it stands in.
std::string embeddedJson(const Json& json)
{
    std::string text;
    for (const char character : json.dump()) {
        if (character == '<')
            text += "\\u003c";
        else
            text += character;
    }
    return text;
}

} // namespace

std::string writeHtmlPage(const HtmlPage& page)
{
    std::string html = fmt::format(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'; "
        "script-src {}; img-src data:; base-uri 'none'; form-action 'none'\">\n<title>{}</title>\n"
        "<link rel=\"icon\" href=\"data:,\">\n",
        scriptSource(page.script), escapeXml(page.title));
    html.append("<style>\n").append(page.style).append(kPageStyle.text).append("</style>\n</head>\n<body>\n");
    html.append(page.body.result());
    html.append("<script type=\"application/json\" id=\"data\">").append(embeddedJson(page.data)).append("</script>\n");
    html.append("<script>").append(page.script.text).append("</script>\n</body>\n</html>\n");
    return html;
}

} // namespace Orvelcs
