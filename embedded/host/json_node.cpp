#include "embedded/host/json_node.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "embedded/host/drawing_refusal.h"
#include "embedded/host/drawing_scalars.h"

namespace Embedded {
namespace {

std::string joined(const std::string& path, std::string_view name)
{
    return path.empty() ? excerpt(name) : path + "." + excerpt(name);
}

template <class T>
T required(std::optional<T> value, const JsonNode& node, const char* otherwise)
{
    if (!value)
        node.refuse(otherwise);
    return *std::move(value);
}

} // namespace

bool JsonNode::has(std::string_view name) const
{
    return value_->is_object() && value_->contains(name);
}

JsonNode JsonNode::member(std::string_view name) const
{
    if (!value_->is_object())
        refuse("must be an object");
    const auto found = value_->find(name);
    if (found == value_->end())
        JsonNode(*value_, joined(path_, name)).refuse("is missing");
    return {*found, joined(path_, name)};
}

void JsonNode::allowOnly(std::initializer_list<std::string_view> names,
                         std::initializer_list<std::string_view> moreNames) const
{
    const auto allows = [](std::initializer_list<std::string_view> allowed, const std::string& name) {
        return std::find(allowed.begin(), allowed.end(), name) != allowed.end();
    };
    if (!value_->is_object())
        refuse("must be an object");
    for (const auto& [name, value] : value_->items()) {
        if (!allows(names, name) && !allows(moreNames, name))
            JsonNode(value, joined(path_, name)).refuse("unknown field");
    }
}

std::size_t JsonNode::size() const
{
    if (!value_->is_array())
        refuse("must be an array");
    return value_->size();
}

JsonNode JsonNode::element(std::size_t index) const
{
    return {(*value_)[index], path_ + "[" + std::to_string(index) + "]"};
}

const std::string& JsonNode::utf8() const
{
    if (!value_->is_string())
        refuse("must be a string");
    return value_->get_ref<const std::string&>();
}

std::wstring JsonNode::text() const
{
    return required(textFromJson(*value_), *this,
                    "must be a text: a string without U+0000, or an object with the one field \"units\"");
}

std::int64_t JsonNode::integer(std::int64_t least, std::int64_t most) const
{
    if (!value_->is_number_integer())
        refuse("must be an integer");
    const bool tooLarge = value_->is_number_unsigned() &&
                          value_->get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    const auto number = value_->get<std::int64_t>();
    if (tooLarge || number < least || number > most)
        refuse(value_->dump() + " is not from " + std::to_string(least) + " to " + std::to_string(most));
    return number;
}

double JsonNode::real() const
{
    return required(realFromJson(*value_), *this,
                    "must be a number, or an object with the one field \"bits\" for one that is not finite");
}

Handle JsonNode::handle() const
{
    const auto handle = value_->is_string() ? handleFromText(utf8()) : std::nullopt;
    return required(handle, *this, "must be a handle: upper-case hexadecimal digits without leading zeros");
}

std::vector<unsigned char> JsonNode::bytes() const
{
    return required(bytesFromHex(utf8()), *this, "must be bytes: two lower-case hexadecimal digits for each");
}

void JsonNode::refuse(const std::string& message) const
{
    throw DrawingRefusal{Qeapp::eFileDamaged, (path_.empty() ? "drawing" : path_) + ": " + message};
}

} // namespace Embedded
