// Builds a JSON value while its text is parsed, so that what must not be in it is refused or left out on the way.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace Embedded {

/// A derived class decides about keys, texts and levels.
class JsonBuilder : public nlohmann::json_sax<nlohmann::ordered_json> {
public:
    bool null() override { return put(nullptr); }
    bool boolean(bool value) override { return put(value); }
    bool number_integer(number_integer_t value) override { return put(value); }
    bool number_unsigned(number_unsigned_t value) override { return put(value); }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return put(value); }
    bool string(string_t& text) override { return put(std::move(text)); }
    bool binary(binary_t& /*bytes*/) override { return false; }
    bool start_object(std::size_t /*count*/) override
    {
        // A list of members that grows copies the keys that it has.
        constexpr std::size_t kUsualMembers = 8;
        enter(nlohmann::ordered_json::object());
        if (leftOut_ == 0)
            open_.back()->get_ref<nlohmann::ordered_json::object_t&>().reserve(kUsualMembers);
        return true;
    }
    bool end_object() override
    {
        leave();
        return true;
    }
    bool start_array(std::size_t /*count*/) override
    {
        enter(nlohmann::ordered_json::array());
        return true;
    }
    bool end_array() override
    {
        leave();
        return true;
    }
    bool key(string_t& name) override
    {
        if (leftOut_ == 0)
            addMember(name);
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override
    {
        return false;
    }

    nlohmann::ordered_json take() { return std::move(root_); }

protected:
    std::size_t levels() const { return open_.size(); }
    /// Adds a member for the next value. Returns false when the object has one of that name.
    bool addMember(const string_t& name)
    {
        const auto [member, isNew] = open_.back()->get_ref<nlohmann::ordered_json::object_t&>().emplace(name, nullptr);
        member_ = &member->second;
        return isNew;
    }
    bool isLeftOut() const { return leftOut_ > 0; }
    /// Leaves the next value out, with all that is in it.
    void leaveNextOut() { leftOut_ = 1; }

private:
    /// The place of the next value: the whole, the end of the innermost array or the last member of the innermost
    /// object.
    nlohmann::ordered_json& place()
    {
        if (open_.empty())
            return root_;
        return open_.back()->is_array() ? open_.back()->emplace_back(nullptr) : *member_;
    }
    template <class Value>
    bool put(Value&& value)
    {
        if (leftOut_ == 0)
            place() = std::forward<Value>(value);
        else if (leftOut_ == 1)
            leftOut_ = 0;
        return true;
    }
    void enter(nlohmann::ordered_json empty)
    {
        if (leftOut_ > 0) {
            ++leftOut_;
            return;
        }
        nlohmann::ordered_json& opened = place();
        opened = std::move(empty);
        open_.push_back(&opened);
    }
    void leave()
    {
        if (leftOut_ == 0)
            open_.pop_back();
        else if (--leftOut_ == 1)
            leftOut_ = 0;
    }

    nlohmann::ordered_json root_;
    std::vector<nlohmann::ordered_json*> open_; // the innermost is last; none of them moves while one in it is open
    nlohmann::ordered_json* member_ = nullptr;
    int leftOut_ = 0; // 1: the next value is left out; more: so many levels, plus one, of a value are open
};

} // namespace Embedded
