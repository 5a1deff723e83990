// Transformation configurations beside pugixml in its wide edition, and the settings file beside iconv.
#include <iconv.h>

#include <pugixml.hpp>

#include <cwchar>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

#include "configuration_text.h"
#include "coordsys/orvel_transformation_config_item_collection.h"
#include "measurement.h"
#include "peers/comparisons.h"
#include "storage/host_holders.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"
#include "transformation/configured_transformation.h"
#include "transformation/user_settings_file.h"

namespace Bench {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

struct Configuration {
    explicit Configuration(std::size_t count) : items(count), text(configurationText(count)), last(pairAt(count - 1)) {}

    std::size_t items;
    std::wstring text;
    CodePair last;
};
using SharedConfiguration = std::shared_ptr<const Configuration>;

pugi::xml_document parsed(const Configuration& configuration)
{
    pugi::xml_document document;
    requireSuccess(document.load_buffer(configuration.text.data(), configuration.text.size() * sizeof(wchar_t),
                                        pugi::parse_default, pugi::encoding_wchar),
                   "pugixml does not parse a configuration");
    return document;
}

void findWithPeer(const Configuration& configuration)
{
    const pugi::xml_document document = parsed(configuration);
    for (const pugi::xml_node item : document.children(L"Item")) {
        if (configuration.last.source == item.child_value(L"SourceCs") &&
            configuration.last.target == item.child_value(L"TargetCs")) {
            requireSuccess(std::wcscmp(item.child_value(L"Name"), nameAt(configuration.items - 1)) == 0,
                           "another item");
            return;
        }
    }
    requireSuccess(false, "pugixml finds no item");
}

void find(const Configuration& configuration)
{
    const auto info = Orvel::FindConfiguredTransformation(
        configuration.last.source.c_str(), configuration.last.target.c_str(), configuration.text.c_str());
    requireSuccess(info && std::wcscmp(info->GetName(), nameAt(configuration.items - 1)) == 0, "finding an item");
}

void parse(const Configuration& configuration)
{
    const Ptr<Cs::OrvelTransformationConfigItemCollection> collection(
        Cs::OrvelTransformationConfigItemCollection::CreateInstance());
    collection->FromXmlString(configuration.text.c_str());
    requireSuccess(static_cast<std::size_t>(collection->GetCount()) == configuration.items, "parsing a collection");
}

Comparison finding(const std::string& count, double goal, const SharedConfiguration& configuration)
{
    return {.work = "find the last of " + count + " items in a text",
            .peer = "pugixml, parse and find",
            .goal = goal,
            .ours = [configuration] { find(*configuration); },
            .theirs = [configuration] { findWithPeer(*configuration); }};
}

Comparison parsing(const std::string& count, double goal, const SharedConfiguration& configuration)
{
    return {.work = "collection of " + count + " items from its text",
            .peer = "pugixml, parse",
            .goal = goal,
            .ours = [configuration] { parse(*configuration); },
            .theirs = [configuration] { parsed(*configuration); }};
}

/// A user's settings file, and iconv over the same bytes and another file.
class SettingsFile {
public:
    explicit SettingsFile(std::size_t items) : text_(configurationText(items)) { write(); }

    void read() const
    {
        const Tests::ScopedVariable variable = folderVariable();
        wchar_t* text = nullptr;
        requireSuccess(Orvel::ReadUserTransformationSettings(text), "reading the settings file");
        const Orvel::HostString owned(text);
    }

    void write() const
    {
        const Tests::ScopedVariable variable = folderVariable();
        requireSuccess(Orvel::WriteUserTransformationSettings(text_.c_str()), "writing the settings file");
    }

    /// Like the module, into memory of its own.
    void readWithPeer() const
    {
        const std::filesystem::path path = folder_.path() / "TransformationSetting.xml";
        const std::size_t size = std::filesystem::file_size(path);
        const auto utf8 = std::make_unique_for_overwrite<char[]>(size);
        std::ifstream(path).read(utf8.get(), static_cast<std::streamsize>(size));
        const auto wide = std::make_unique_for_overwrite<wchar_t[]>(size);
        convert("WCHAR_T", "UTF-8", utf8.get(), size, wide.get(), size * sizeof(wchar_t));
    }

    /// Each line is in the file before the next one, as in a settings file.
    void writeWithPeer()
    {
        std::string utf8(text_.size() * 2, '\0');
        const std::size_t left =
            convert("UTF-8", "WCHAR_T", text_.data(), text_.size() * sizeof(wchar_t), utf8.data(), utf8.size());
        utf8.resize(utf8.size() - left);
        std::ofstream file(folder_.path() / "peer.xml");
        for (std::string_view rest = utf8; !rest.empty();) {
            const std::size_t line = rest.find("</Item>") + 7;
            (file << rest.substr(0, line) << "\r\n").flush();
            rest.remove_prefix(line);
        }
        requireSuccess(file.good(), "writing the peer's file");
    }

private:
    /// Programs that other comparisons start must not see the file: they would read it.
    Tests::ScopedVariable folderVariable() const
    {
        return Tests::ScopedVariable("VORLEN_USER_DICTIONARY_PATH", folder_.path().string());
    }

    /// The room that is left in the output.
    static std::size_t convert(const char* to, const char* from, void* input, std::size_t inputLength, void* output,
                               std::size_t outputLength)
    {
        iconv_t converter = iconv_open(to, from);
        auto* source = static_cast<char*>(input);
        auto* target = static_cast<char*>(output);
        requireSuccess(iconv(converter, &source, &inputLength, &target, &outputLength) == 0 && inputLength == 0,
                       "iconv does not convert");
        iconv_close(converter);
        return outputLength;
    }

    Tests::TemporaryFolder folder_;
    std::wstring text_;
};

} // namespace

void addConfigurationComparisons(std::vector<Comparison>& comparisons)
{
    const auto small = std::make_shared<const Configuration>(100);
    const auto large = std::make_shared<const Configuration>(100'000);
    comparisons.push_back(finding("100", 2, small));
    comparisons.push_back(finding("100,000", 3, large));
    comparisons.push_back(parsing("100", 0.8, small));
    comparisons.push_back(parsing("100,000", 1.3, large));
    const auto file = std::make_shared<SettingsFile>(50'000);
    comparisons.push_back({.work = "read a settings file of 50,000 items",
                           .peer = "read and iconv",
                           .goal = 1,
                           .ours = [file] { file->read(); },
                           .theirs = [file] { file->readWithPeer(); }});
    comparisons.push_back({.work = "write a settings file of 50,000 items",
                           .peer = "iconv and write",
                           .goal = 1,
                           .ours = [file] { file->write(); },
                           .theirs = [file] { file->writeWithPeer(); }});
}

} // namespace Bench
