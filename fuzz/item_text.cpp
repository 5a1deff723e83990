#include "fuzz/input_text.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"
#include "transformation/reference_item_parser.h"

namespace Fuzz {

void itemText(Input input)
{
    const LeakCheck guard;
    const std::wstring text = decodeText(input);
    const Tests::ItemFields before{
        .source = L"s0", .target = L"t0", .name = L"n0", .type = 7, .note = L"o0", .version = L"v"};
    Tests::ItemFields expected = before;
    Tests::Reference::readItem(text, expected);
    const Ptr<Tests::ConfigItem> item = Tests::newItem(before);
    item->FromXmlString(text.c_str());
    require(Tests::readFields(*item) == expected, "the fields are those of the second parser");
    require(item->ToXmlString() == Tests::Reference::writeItem(expected), "the text is that of the second writer");
}

} // namespace Fuzz
