// A drawing as plain values: what a drawing file holds, and what a database can be made from. It is the seam between
// the object model and the file format.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/export.h"

class QeDbDatabase;

namespace Embedded {

using Handle = std::uint64_t; // 0: none

/// One resbuf: a group code with the value that the code calls for.
struct ImageValue {
    int code = 0;
    std::variant<std::wstring, std::vector<unsigned char>, double, std::int32_t> value;
    friend bool operator==(const ImageValue&, const ImageValue&) = default;
};
using ImageChain = std::vector<ImageValue>;

struct DictionaryImage {
    std::vector<std::pair<std::wstring, Handle>> entries; // in key order
    friend bool operator==(const DictionaryImage&, const DictionaryImage&) = default;
};
struct XrecordImage {
    ImageChain chain;
    friend bool operator==(const XrecordImage&, const XrecordImage&) = default;
};
struct RegAppTableImage {
    std::vector<Handle> records; // in name order
    friend bool operator==(const RegAppTableImage&, const RegAppTableImage&) = default;
};
struct RegAppRecordImage {
    std::wstring name;
    friend bool operator==(const RegAppRecordImage&, const RegAppRecordImage&) = default;
};
struct BlockTableImage {
    std::vector<Handle> records; // in name order
    friend bool operator==(const BlockTableImage&, const BlockTableImage&) = default;
};
struct BlockRecordImage {
    std::wstring name;
    friend bool operator==(const BlockRecordImage&, const BlockRecordImage&) = default;
};
struct GeoDataImage {
    std::wstring coordinateSystem;
    Handle block = 0;
    friend bool operator==(const GeoDataImage&, const GeoDataImage&) = default;
};

struct ObjectImage {
    Handle handle = 0;
    Handle owner = 0; // 0 for the named objects dictionary, the tables, and what was removed from its dictionary
    std::vector<std::pair<std::wstring, ImageChain>> extendedData; // by application, in name order; without the 1001
    std::variant<DictionaryImage, XrecordImage, RegAppTableImage, RegAppRecordImage, BlockTableImage, BlockRecordImage,
                 GeoDataImage>
        contents;
    friend bool operator==(const ObjectImage&, const ObjectImage&) = default;
};

/// Live objects only, in handle order.
struct DrawingImage {
    int drawingVersion = 0;
    Handle nextHandle = 1;
    Handle namedObjects = 0;
    Handle regAppTable = 0;
    Handle blockTable = 0;
    std::vector<ObjectImage> objects;
    friend bool operator==(const DrawingImage&, const DrawingImage&) = default;
};

/// What the drawing holds now. Nothing in it may be open for write.
QEHOST_API DrawingImage imageOf(const QeDbDatabase& database);

/// A new drawing that holds what the image says; the image must be valid (see validateImage).
QEHOST_API std::unique_ptr<QeDbDatabase> databaseFrom(const DrawingImage& image);

/// Empty for an image that a database can be made from; otherwise what is wrong, beginning with the place as a path
/// into the file ("objects[3].owner: …").
QEHOST_API std::string validateImage(const DrawingImage& image);

} // namespace Embedded
