#include "sweep/drawing_contents.h"

#include <algorithm>
#include <utility>

namespace Tests {
namespace {

using Embedded::DictionaryImage;
using Embedded::Handle;
using Embedded::ObjectImage;

const ObjectImage* objectOf(const Embedded::DrawingImage& image, Handle handle)
{
    const auto found = std::ranges::find(image.objects, handle, &ObjectImage::handle);
    return found != image.objects.end() ? &*found : nullptr;
}

ObjectImage withoutHandles(ObjectImage object)
{
    object.handle = 0;
    object.owner = 0;
    if (auto* const geoData = std::get_if<Embedded::GeoDataImage>(&object.contents))
        geoData->block = 0;
    if (auto* const dictionary = std::get_if<DictionaryImage>(&object.contents))
        dictionary->entries.clear(); // they follow as entries of their own
    return object;
}

bool isWorthTelling(const ObjectImage& object)
{
    return !std::holds_alternative<DictionaryImage>(object.contents) || !object.extendedData.empty();
}

void addWithEntries(const Embedded::DrawingImage& image, Handle handle, const std::wstring& way,
                    DrawingContents& contents)
{
    const ObjectImage* const object = objectOf(image, handle);
    if (object == nullptr)
        return;
    if (isWorthTelling(*object))
        contents.emplace(way, withoutHandles(*object));
    if (const auto* const dictionary = std::get_if<DictionaryImage>(&object->contents)) {
        for (const auto& [key, entry] : dictionary->entries)
            addWithEntries(image, entry, way + L"/" + key, contents);
    }
}

} // namespace

DrawingContents contentsOf(const Embedded::DrawingImage& image)
{
    DrawingContents contents;
    addWithEntries(image, image.namedObjects, L"", contents);
    for (const ObjectImage& object : image.objects) {
        if (std::holds_alternative<Embedded::GeoDataImage>(object.contents))
            contents.emplace(L"GeoData", withoutHandles(object));
    }
    return contents;
}

} // namespace Tests
