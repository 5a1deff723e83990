// Which mutant a program has: the number in ORVEL_MUTANT, none where it has none. Sources that scripts/mutate rewrote
// ask here at every place that it can change, and go on as they were written unless the place's number was chosen.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <type_traits>

namespace Mutation {

inline constexpr std::size_t kMostMutants = 1U << 16;
inline constexpr int kCannotBeMade = 97;   // the exit status of a mutant that the types at its place do not allow
inline constexpr int kReachedTooOften = 98; // of one whose loop does not end

struct Selection {
    int active = 0;
    bool recording = false;
    unsigned long long reachesLeft = 0;
    unsigned long long reached[kMostMutants] = {}; // by the first number of each place

    Selection()
    {
        const char* const number = std::getenv("ORVEL_MUTANT");
        const char* const limit = std::getenv("ORVEL_MUTANT_REACHES");
        active = number != nullptr ? std::atoi(number) : 0;
        recording = active < 0;
        reachesLeft = limit != nullptr ? std::strtoull(limit, nullptr, 10) : ~0ULL;
    }
};

inline Selection selection;

inline int chosenAtRunTime(int first, int count)
{
    if (selection.recording)
        ++selection.reached[first];
    const int choice = selection.active - first;
    if (choice < 0 || choice >= count)
        return 0;
    if (selection.reachesLeft-- == 0)
        std::_Exit(kReachedTooOften);
    return choice + 1;
}

/// Which of a place's changes is to be made, counted from 1; 0 for none.
constexpr int chosen(int first, int count)
{
    return std::is_constant_evaluated() ? 0 : chosenAtRunTime(first, count);
}

/// A place with a single change.
constexpr bool on(int first)
{
    return chosen(first, 1) != 0;
}

/// Of a place with three, whether one of two was chosen.
constexpr bool oneOf(int first, int one, int other)
{
    const int choice = chosen(first, 3);
    return choice == one || choice == other;
}

struct ShiftLeft {
    template <class A, class B>
    constexpr auto operator()(const A& a, const B& b) const -> decltype(a << b)
    {
        return a << b;
    }
};

struct ShiftRight {
    template <class A, class B>
    constexpr auto operator()(const A& a, const B& b) const -> decltype(a >> b)
    {
        return a >> b;
    }
};

template <class Operator, class Result, class A, class B>
constexpr Result applied(const A& a, const B& b)
{
    if constexpr (std::is_invocable_r_v<Result, Operator, const A&, const B&>)
        return static_cast<Result>(Operator{}(a, b));
    else
        std::_Exit(kCannotBeMade);
}

/// An operator and what it can be changed into.
template <class Original, class... Others, class A, class B>
constexpr auto binary(int first, const A& a, const B& b)
{
    using Result = std::invoke_result_t<Original, const A&, const B&>;
    const int choice = chosen(first, sizeof...(Others));
    if (choice == 0)
        return Original{}(a, b);
    Result result{};
    int number = 0;
    static_cast<void>(((++number == choice && (result = applied<Others, Result>(a, b), true)) || ...));
    return result;
}

/// Which statement of a block comes at a step, where a choice other than 0 lets that statement change places with the
/// one before it.
constexpr int inOrder(int choice, int step)
{
    if (choice != 0 && step == choice)
        return choice - 1;
    return choice != 0 && step == choice - 1 ? choice : step;
}

/// A condition can be true, false, and the opposite.
template <class Value>
constexpr bool condition(int first, int count, const Value& value)
{
    const int choice = chosen(first, count);
    const bool original = static_cast<bool>(value);
    return choice == 0 ? original : choice == 1 || (choice == 3 && !original);
}

/// A number can be one more, one less, and zero.
template <class Value>
constexpr Value number(int first, int count, Value value)
{
    if constexpr (std::is_integral_v<Value>) {
        switch (chosen(first, count)) {
        case 1: return static_cast<Value>(value + 1);
        case 2: return static_cast<Value>(value - 1);
        case 3: return Value{};
        default: return value;
        }
    } else if (chosen(first, count) != 0) {
        std::_Exit(kCannotBeMade);
    } else {
        return value;
    }
}

/// An enumerator can be another one.
template <class Value>
constexpr Value enumerator(int first, Value value, long long other)
{
    return on(first) ? static_cast<Value>(other) : value;
}

/// A pointer can be null.
template <class Value>
constexpr Value pointer(int first, Value value)
{
    return on(first) ? nullptr : value;
}

} // namespace Mutation
