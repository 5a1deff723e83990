#include "fuzz/definition_round_trip.h"

#include <string>
#include <vector>

#include "fuzz/oracle.h"
#include "storage/packed_definition.h"
#include "storage/serialized_text.h"

namespace Fuzz {

void requirePackedRoundTrip(const Orvel::Library::DefinitionBase& definition)
{
    std::vector<unsigned char> first;
    require(Orvel::EncodeDefinitionBytes(&definition, first),
            "a definition that came out of packed bytes can be packed");
    const DefinitionHolder again = Orvel::DecodeDefinitionBytes(first.data(), first.size());
    require(static_cast<bool>(again), "packed bytes can be read");
    std::vector<unsigned char> second;
    require(Orvel::EncodeDefinitionBytes(again.get(), second), "a definition that was packed can be packed again");
    require(first == second, "packing again gives the same bytes");
}

void requireTextRoundTrip(const Orvel::Library::DefinitionBase& definition)
{
    std::wstring first;
    const Orvel::Library::Status written = Orvel::SerializeToWideText(first, &definition, false);
    if (written == Orvel::Library::statusBufferTooSmall)
        return; // a text that can be read may be too long to be written
    require(written == Orvel::Library::statusOk, "a definition that came out of a text can be written");
    Orvel::LibraryObject<Orvel::Library::DefinitionBaseArray> again;
    require(Orvel::DeserializeWideText(again, first.c_str()) == Orvel::Library::statusOk, "a text can be read");
    require(again->GetCount() == 1, "the text of one definition gives one");
    std::wstring second;
    require(Orvel::SerializeToWideText(second, again->GetItem(0), false) == Orvel::Library::statusOk,
            "a definition that was written can be written again");
    require(first == second, "writing again gives the same text");
}

} // namespace Fuzz
