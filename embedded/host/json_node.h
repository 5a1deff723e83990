// A value of a parsed drawing file together with its place, so that whatever is wrong with it can be said with the path
// that leads there. Every question that the value cannot answer throws DrawingRefusal.
#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/host/drawing_image.h"

namespace Embedded {

class JsonNode {
public:
    /// The document, which must outlive every node of it.
    explicit JsonNode(const nlohmann::json& root) : JsonNode(root, {}) {}

    bool has(std::string_view name) const;
    JsonNode member(std::string_view name) const;
    /// Refuses what is no object, and an object with any other field.
    void allowOnly(std::initializer_list<std::string_view> names,
                   std::initializer_list<std::string_view> moreNames = {}) const;

    std::size_t size() const;
    JsonNode element(std::size_t index) const;

    /// Text in the file's own encoding, for names that the format defines.
    const std::string& utf8() const;
    std::wstring text() const;
    std::int64_t integer(std::int64_t least, std::int64_t most) const;
    double real() const;
    Handle handle() const;
    std::vector<unsigned char> bytes() const;

    [[noreturn]] void refuse(const std::string& message) const;

private:
    JsonNode(const nlohmann::json& value, std::string path) : value_(&value), path_(std::move(path)) {}

    const nlohmann::json* value_;
    std::string path_;
};

} // namespace Embedded
