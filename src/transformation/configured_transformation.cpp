#include "transformation/configured_transformation.h"

#include <optional>
#include <string>
#include <string_view>

#include "platform/win32.h"
#include "storage/ignore_result.h"
#include "transformation/item_text.h"

namespace Orvel {
namespace {

/// Returns whether the last characters tell that the texts differ: up to the digits no character has a case.
bool endDifferently(std::wstring_view left, std::wstring_view right)
{
    return !left.empty() && left.back() != right.back() && left.back() <= L'9';
}

/// Ignores case. Most codes differ in length or end in another digit, so that few are compared as a whole.
bool isSameCode(std::wstring_view left, std::wstring_view right)
{
    return left.size() == right.size() && !endDifferently(left, right) &&
           _wcsnicmp(left.data(), right.data(), left.size()) == 0;
}

bool matches(const ItemText& item, std::wstring_view source, std::wstring_view target)
{
    return isSameCode(item.sourceCs.value_or(L""), source) && isSameCode(item.targetCs.value_or(L""), target);
}

/// The first item of the text that fulfils the condition.
template <class Condition>
std::optional<ItemText> firstItem(std::wstring_view text, const Condition& fulfils)
{
    for (ItemText item; takeItem(text, item);) {
        if (fulfils(item))
            return item;
    }
    return std::nullopt;
}

/// A definition that cannot be loaded counts as not reversible.
template <class Definition>
bool isReversible(const std::wstring& name)
{
    LibraryObject<Definition> definition;
    // Only the definition matters.
    ignoreResult([&] { return Definition::Load(name.c_str(), definition.put()); });
    bool reversible = false;
    return definition && definition->IsReversible(reversible) == Library::statusOk && reversible;
}

bool isReversible(const ItemText& item)
{
    const std::wstring name(item.name.value_or(L""));
    return item.type == Library::transformationPath ? isReversible<Library::GeodeticPathDefinition>(name)
                                                    : isReversible<Library::GeodeticTransformationDefinition>(name);
}

LibraryObject<Library::TransformationInfo> newInfo(const ItemText& item)
{
    LibraryObject<Library::TransformationInfo> info;
    const bool made = Library::TransformationInfo::CreateInstance(info.put()) == Library::statusOk && info &&
                      info->SetName(std::wstring(item.name.value_or(L"")).c_str()) == Library::statusOk &&
                      info->SetKind(item.type.value_or(Library::transformationNone)) == Library::statusOk;
    if (!made)
        info.reset();
    return info;
}

} // namespace

LibraryObject<Library::TransformationInfo> FindConfiguredTransformation(const wchar_t* sourceCs,
                                                                        const wchar_t* targetCs, const wchar_t* text)
{
    if (sourceCs == nullptr || targetCs == nullptr || text == nullptr || _wcsicmp(sourceCs, targetCs) == 0)
        return {};
    std::optional<ItemText> item =
        firstItem(text, [&](const ItemText& each) { return matches(each, sourceCs, targetCs); });
    if (!item)
        item = firstItem(text,
                         [&](const ItemText& each) { return matches(each, targetCs, sourceCs) && isReversible(each); });
    return item ? newInfo(*item) : LibraryObject<Library::TransformationInfo>();
}

} // namespace Orvel
