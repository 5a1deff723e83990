// The fixture for the transformation configuration: a current document, a folder and a registry for the user, and a
// log of notices.
#pragma once

#include <string>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/diagnostics/fault_injection.h"
#include "storage/host_holders.h"
#include "storage/resbuf_dictionary.h"
#include "support/chain.h"
#include "support/drawing.h"
#include "support/platform_test.h"
#include "support/recording_reactor.h"
#include "support/scoped_document.h"
#include "support/scoped_registry.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace Tests {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
using Orvel::HostString;

/// The text of an item, as the module writes it.
inline std::wstring itemElement(const std::wstring& source, const std::wstring& target, const std::wstring& name,
                                int type = 2, const std::wstring& note = L"")
{
    return L"<Item><Version>1.0</Version><SourceCs>" + source + L"</SourceCs><TargetCs>" + target +
           L"</TargetCs><Name>" + name + L"</Name><Type>" + std::to_wstring(type) + L"</Type><Note>" + note +
           L"</Note></Item>";
}

/// The result and the text of a function that reads a configuration.
struct ReadText {
    bool read = false;
    std::wstring text;
    friend bool operator==(const ReadText&, const ReadText&) = default;
};
inline const ReadText kNothingRead{false, L""};

inline std::ostream& operator<<(std::ostream& out, const ReadText& result)
{
    return out << (result.read ? "read \"" : "not read \"") << Embedded::utf8FromWide(result.text) << '"';
}

class TransformationTest : public PlatformTest {
protected:
    TemporaryFolder folder;
    ScopedRegistry registry{folder, folder.path() / "registry.db"};
    ScopedVariable userFolder{"VORLEN_USER_DICTIONARY_PATH", folder.path().string()};
    ScopedDocument document;
    Notices log;
    RecordingReactor reactor{log};

    std::filesystem::path settingsFile() const { return folder.path() / "TransformationSetting.xml"; }
    std::string contents() const { return drawingContents(*document.database()); }

    /// Calls the function with an out-parameter that has a value, and releases the returned text.
    template <class Reader>
    static ReadText readWith(const Reader& reader)
    {
        wchar_t former[] = L"former";
        wchar_t* text = former;
        const bool read = reader(text);
        ReadText result{read, text};
        if (read)
            qeutDelBuffer(text);
        return result;
    }

    /// Stores a chain under a key of the drawing's dictionary of configurations.
    void storeEntry(const wchar_t* key, const Items& items) const
    {
        const Orvel::CResbufDictionary dictionary(L"ORVEL_CS_TRANSFORMATION_CONFIG", document.database());
        ASSERT_TRUE(dictionary.SetResbuf(key, makeChain(items).get(), nullptr));
    }
};

} // namespace Tests
