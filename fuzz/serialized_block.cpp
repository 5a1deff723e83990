#include <string>
#include <string_view>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "fuzz/byte_source.h"
#include "fuzz/definition_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/targets.h"

namespace Fuzz {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
using DefinitionArray = Orvel::LibraryObject<Orvel::Library::DefinitionBaseArray>;

/// Takes the input as it is, or converts it from UTF-8, which a fuzzer explores better. Adds the NUL unit that a caller
/// must provide.
std::string makeBlock(Input input)
{
    ByteSource source(input);
    const bool isText = source.below(2) == 1;
    const Input rest = source.rest();
    const std::string_view bytes(reinterpret_cast<const char*>(rest.data()), rest.size());
    std::string block = isText ? Embedded::utf16leFromWide(Embedded::wideFromUtf8(bytes)) : std::string(bytes);
    block.append(block.size() % 2 + 2, '\0');
    return block;
}

} // namespace

void serializedBlock(Input input)
{
    const LeakCheck guard;
    const std::string block = makeBlock(input);
    const std::vector<unsigned char> bytes(block.begin(), block.end());
    DefinitionArray definitions;
    const Qeapp::ErrorStatus result =
        Cs::DeserializeCoordinateSystem(definitions.put(), bytes.data(), static_cast<int>(bytes.size()));
    require(result == Qeapp::eOk || result == Qeapp::eInvalidInput, "bytes are a block or invalid input");
    require(static_cast<bool>(definitions) == (result == Qeapp::eOk), "an array is handed out on success alone");
    if (!definitions)
        return;
    require(definitions->GetCount() > 0, "a block holds a definition");
    for (int index = 0; index < definitions->GetCount(); ++index)
        requireTextRoundTrip(*definitions->GetItem(index));
}

} // namespace Fuzz
