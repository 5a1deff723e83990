#include <algorithm>
#include <string>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/scoped_report.h"
#include "storage/library_holder.h"
#include "storage/packed_definition.h"
#include "storage/serialized_text.h"
#include "storage/utf16le.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {

namespace {

Qeapp::ErrorStatus writeBlock(const CoordinateReferenceSystemDefinition* definition, QeDb::QeDbDwgVersion version,
                              std::vector<unsigned char>& block, Status& libraryStatus)
{
    if (version < QeDb::kGeoDataTextDwg)
        return EncodeDefinitionBytes(definition, block) ? Qeapp::eOk : Qeapp::eInvalidInput;
    std::wstring text;
    libraryStatus = SerializeToWideText(text, definition, false);
    const Qeapp::ErrorStatus result = libraryResult(libraryStatus);
    if (result == Qeapp::eOk)
        block = encodeUtf16le(text);
    return result;
}

Qeapp::ErrorStatus copyTo(const std::vector<unsigned char>& block, unsigned char*& bytes, int& length)
{
    const Qeapp::ErrorStatus result = qeutNewBuffer(bytes, block.size());
    if (result != Qeapp::eOk)
        return result;
    std::ranges::copy(block, bytes);
    length = static_cast<int>(block.size());
    return Qeapp::eOk;
}

Qeapp::ErrorStatus readBlock(LibraryObject<DefinitionBaseArray>& definitions, const unsigned char* bytes,
                             std::size_t length, Status& libraryStatus)
{
    libraryStatus = DefinitionBaseArray::CreateInstance(definitions.put());
    const Qeapp::ErrorStatus result = libraryResult(libraryStatus, definitions);
    if (result != Qeapp::eOk)
        return result;
    LibraryObject<Library::DefinitionBase> packed = DecodeDefinitionBytes(bytes, length);
    libraryStatus = packed ? addDefinition(*definitions.get(), packed) : deserializeUtf16leText(definitions, bytes);
    return libraryResult(libraryStatus, definitions);
}

} // namespace

Qeapp::ErrorStatus SerializeCoordinateSystem(const CoordinateReferenceSystemDefinition* definition,
                                             unsigned char*& bytes, int& length, QeDb::QeDbDwgVersion version,
                                             Status* status)
{
    if (definition == nullptr)
        return Qeapp::eInvalidInput;
    bytes = nullptr;
    length = -1;
    Status libraryStatus = Library::statusOk;
    Qeapp::ErrorStatus result = Qeapp::eOk;
    const ScopedStatusReport report(status, &libraryStatus, &result);
    std::vector<unsigned char> block;
    result = writeBlock(definition, version, block, libraryStatus);
    if (result == Qeapp::eOk)
        result = copyTo(block, bytes, length);
    return result;
}

Qeapp::ErrorStatus DeserializeCoordinateSystem(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                               int length, Status* status)
{
    if (bytes == nullptr || length < 1)
        return Qeapp::eInvalidInput;
    Status libraryStatus = Library::statusOk;
    Qeapp::ErrorStatus result = Qeapp::eOk;
    const ScopedStatusReport report(status, &libraryStatus, &result);
    LibraryObject<DefinitionBaseArray> array;
    result = readBlock(array, bytes, static_cast<std::size_t>(length), libraryStatus);
    if (result == Qeapp::eOk)
        definitions = array.release();
    return result;
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
