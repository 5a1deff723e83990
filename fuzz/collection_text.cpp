#include <vector>

#include "fuzz/input_text.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"
#include "transformation/reference_item_parser.h"

namespace Fuzz {

void collectionText(Input input)
{
    const LeakCheck guard;
    const std::wstring text = decodeText(input);
    const std::vector<Tests::ItemFields> expected = Tests::Reference::readConfiguration(text);
    const Ptr<Tests::ConfigCollection> collection = Tests::newCollection();
    collection->FromXmlString(text.c_str());
    require(Tests::readFields(*collection) == expected, "the items are those of the second parser");
    const std::wstring written = collection->ToXmlString();
    require(written == Tests::Reference::writeConfiguration(expected), "the text is that of the second writer");
    collection->FromXmlString(written.c_str());
    require(Tests::readFields(*collection) == Tests::Reference::readConfiguration(written),
            "the items of what was written are those of the second parser");
}

} // namespace Fuzz
