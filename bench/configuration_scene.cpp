#include "configuration_scene.h"

#include <memory>

#include "allocation_count.h"
#include "configuration_text.h"
#include "embedded/host/application/application.h"
#include "embedded/windows/registry_file.h"

namespace Bench {
namespace {

QeApDocument* newDocument()
{
    return Embedded::openDocument(std::make_unique<QeDbDatabase>());
}

void close(QeApDocument* document)
{
    static_cast<void>(Embedded::closeDocument(document)); // nothing here locks it
}

} // namespace

ConfigurationScene::ConfigurationScene(std::size_t items)
    : items_(items), text_(configurationText(items)), document_(newDocument())
{
    clear();
    allocatedAtFirst_ = allocatedBytes();
}

ConfigurationScene::~ConfigurationScene()
{
    close(document_);
    Embedded::useRegistryFile({});
}

void ConfigurationScene::clear()
{
    releaseResults();
    collection = {};
    isStored = false;
    renewDrawing();
    std::filesystem::remove_all(userFolder_);
    std::filesystem::create_directory(userFolder_);
    Embedded::useRegistryFile(userFolder_ / "registry.db");
}

void ConfigurationScene::renewDrawing()
{
    close(document_);
    document_ = newDocument();
}

void ConfigurationScene::releaseResults()
{
    read.reset();
    found.reset();
    written.clear();
    written.shrink_to_fit();
}

} // namespace Bench
