// The setting of a measurement: a text, a drawing, a user's folder and registry, and the results of operations.
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
    /// Restores the initial state: an empty drawing, an empty user's folder and registry, no results.
    void clear();
    /// The memory that was allocated at first, including the text.
    std::size_t allocatedAtFirst() const { return allocatedAtFirst_; }

    /// Replaces the drawing by an empty one.
    void renewDrawing();
    /// Releases the results of an operation.
    void releaseResults();

    // The arguments and results of operations.
    Orvel::HostString read;
    Orvel::LibraryObject<Zentara::Infrastructure::SpatialReference::TransformationInfo> found;
    Ptr<Zentara::Gis::Orvel::CoordinateSystem::OrvelTransformationConfigItemCollection> collection;
    std::wstring written;
    bool succeeded = false;
    bool isStored = false; // whether the store of the operations holds the whole text

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
