#include "fuzz/sample_definitions.h"

#include "fuzz/oracle.h"
#include "storage/packed_definition.h"
#include "support/library_definitions.h"

namespace Fuzz {
namespace {

namespace Library = Orvel::Library;

SampleDefinition packSample(const Library::DefinitionBase* definition)
{
    SampleDefinition sample;
    const wchar_t* code = nullptr;
    Tests::requireOk(definition->GetCode(code));
    sample.code = code;
    require(Orvel::EncodeDefinitionBytes(definition, sample.packed), "a sample can be packed");
    return sample;
}

void addWithDependents(std::vector<SampleDefinition>& samples, const Tests::SystemHolder& system)
{
    samples.push_back(packSample(system.get()));
    Tests::DatumHolder datum;
    if (system->GetDatum(datum.put()) == Library::statusOk)
        samples.push_back(packSample(datum.get()));
    Tests::EllipsoidHolder ellipsoid;
    if (Library::CoordinateReferenceSystemUtil::GetEllipsoid(system.get(), ellipsoid.put()) == Library::statusOk)
        samples.push_back(packSample(ellipsoid.get()));
}

std::vector<SampleDefinition> makeSamples()
{
    std::vector<SampleDefinition> samples;
    for (const wchar_t* const code : {L"EPSG:25832", L"EPSG:4326", L"EPSG:4978", L"EPSG:4047", L"LOCAL:METRE"})
        addWithDependents(samples, Tests::catalogSystem(code));
    addWithDependents(samples, Tests::userSystem());
    return samples;
}

} // namespace

const std::vector<SampleDefinition>& sampleDefinitions()
{
    static const std::vector<SampleDefinition> samples = makeSamples();
    return samples;
}

} // namespace Fuzz
