// Where an operation is measured: a text, a drawing, a user's folder and registry, and what the operations hand out.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "coordsys/orvel_transformation_config.h"
#include "platform/host.h"
#include "storage/host_holders.h"
#include "storage/library_holder.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace Bench {

class ConfigurationScene {
public:
    explicit ConfigurationScene(std::size_t items);
    ConfigurationScene(const ConfigurationScene&) = delete;
    ConfigurationScene& operator=(const ConfigurationScene&) = delete;
    ~ConfigurationScene();

    std::size_t items() const { return items_; }
    const std::wstring& text() const { return text_; }
    std::size_t textInBytes() const { return text_.size() * sizeof(wchar_t); }
    /// Makes everything as it was at first: an empty drawing, a user with nothing, nothing handed out.
    void clear();
    /// What was allocated at first, the text included.
    std::size_t allocatedAtFirst() const { return allocatedAtFirst_; }

    /// An empty drawing takes the place of the one before.
    void renewDrawing();
    /// Lets go of what an operation handed out.
    void releaseResults();

    // What operations hand out and take.
    Orvel::HostString read;
    Orvel::LibraryObject<Zentara::Infrastructure::SpatialReference::TransformationInfo> found;
    Ptr<Zentara::Gis::Orvel::CoordinateSystem::OrvelTransformationConfigItemCollection> collection;
    std::wstring written;
    bool succeeded = false;
    bool isStored = false; // the whole text, wherever the operations keep it

private:
    std::size_t items_;
    std::wstring text_;
    Tests::TemporaryFolder folder_;
    std::filesystem::path userFolder_ = folder_.path() / "user";
    Tests::ScopedVariable userFolderVariable_{"VORLEN_USER_DICTIONARY_PATH", userFolder_.string()};
    QeApDocument* document_;
    std::size_t allocatedAtFirst_ = 0;
};

} // namespace Bench
