#include "spatial_reference.h"

#include "core/text.h"

#include <utility>

namespace Zentara::Infrastructure::SpatialReference {

namespace {

template <class T, class Made = T>
Status hand(T*& out, Made* made)
{
    out = made;
    return made ? statusOk : statusOutOfMemory;
}

Status lend(const std::wstring& text, const wchar_t*& out)
{
    out = text.c_str();
    return statusOk;
}

template <class T>
Status loadShift(const wchar_t* name, bool isPath, T*& definition)
{
    definition = nullptr;
    if (Core::failsNow())
        return statusTrialFailure;
    const auto shift = name ? Survey::findShift(Core::toUtf8(name), isPath) : std::nullopt;
    return shift ? hand(definition, new T(*shift)) : statusNotFound;
}

} // namespace

void Object::Destroy(const Object* object)
{
    delete object;
}

// Definitions

DefinitionBase::DefinitionBase(const std::string& code) : m_code(Core::toWide(code))
{
}

DefinitionBase* DefinitionBase::make(const Survey::Definition& value)
{
    if (const auto* system = std::get_if<Survey::System>(&value))
        return new CoordinateReferenceSystemDefinition(*system);
    if (const auto* datum = std::get_if<Survey::Datum>(&value))
        return new DatumDefinition(*datum);
    return new EllipsoidDefinition(std::get<Survey::Ellipsoid>(value));
}

Status DefinitionBase::GetCode(const wchar_t*& code) const
{
    return lend(m_code, code);
}

EllipsoidDefinition::EllipsoidDefinition(Survey::Ellipsoid ellipsoid)
    : DefinitionBase(ellipsoid.code), m_ellipsoid(std::move(ellipsoid))
{
}

DatumDefinition::DatumDefinition(Survey::Datum datum)
    : DefinitionBase(datum.code), m_datum(std::move(datum)), m_ellipsoidCode(Core::toWide(m_datum.ellipsoidCode))
{
}

Status DatumDefinition::GetEllipsoidCode(const wchar_t*& code) const
{
    return lend(m_ellipsoidCode, code);
}

Status DatumDefinition::SetEllipsoid(const EllipsoidDefinition* ellipsoid)
{
    if (!ellipsoid)
        return statusFailed;
    m_datum.ellipsoid = ellipsoid->ellipsoid();
    m_datum.ellipsoidCode = m_datum.ellipsoid->code;
    m_ellipsoidCode = Core::toWide(m_datum.ellipsoidCode);
    return statusOk;
}

CoordinateReferenceSystemDefinition::CoordinateReferenceSystemDefinition(Survey::System system)
    : DefinitionBase(system.code), m_system(std::move(system))
{
    copyCodes();
}

void CoordinateReferenceSystemDefinition::copyCodes()
{
    // A system on a datum has the ellipsoid of the datum.
    const auto ellipsoid = Survey::ellipsoidUnder(m_system);
    m_datumCode = Core::toWide(m_system.datumCode);
    m_ellipsoidCode = Core::toWide(ellipsoid ? ellipsoid->code : m_system.ellipsoidCode);
}

Status CoordinateReferenceSystemDefinition::Load(const wchar_t* code, CoordinateReferenceSystemDefinition*& definition)
{
    definition = nullptr;
    if (Core::failsNow())
        return statusTrialFailure;
    if (!code)
        return statusFailed;
    const auto system = Survey::findSystem(Core::toUtf8(code));
    return system ? hand(definition, new CoordinateReferenceSystemDefinition(*system)) : statusNotFound;
}

Status CoordinateReferenceSystemDefinition::GetKind(int& kind) const
{
    switch (m_system.kind) {
    case Survey::SystemKind::local:
        kind = kindNotEarthReferenced;
        break;
    case Survey::SystemKind::geographic:
        kind = kindGeographic;
        break;
    case Survey::SystemKind::projected:
        kind = kindProjected;
        break;
    }
    return statusOk;
}

Status CoordinateReferenceSystemDefinition::GetDatumCode(const wchar_t*& code) const
{
    return lend(m_datumCode, code);
}

Status CoordinateReferenceSystemDefinition::GetEllipsoidCode(const wchar_t*& code) const
{
    return lend(m_ellipsoidCode, code);
}

Status CoordinateReferenceSystemDefinition::GetDatum(DatumDefinition*& datum) const
{
    datum = nullptr;
    if (Core::failsNow())
        return statusTrialFailure;
    const auto found = Survey::datumUnder(m_system);
    return found ? hand(datum, new DatumDefinition(*found)) : statusNotFound;
}

Status CoordinateReferenceSystemDefinition::SetDatum(const DatumDefinition* datum)
{
    if (!datum)
        return statusFailed;
    m_system.datum = datum->datum();
    m_system.datumCode = m_system.datum->code;
    copyCodes();
    return statusOk;
}

Status CoordinateReferenceSystemDefinition::SetEllipsoid(const EllipsoidDefinition* ellipsoid)
{
    if (!ellipsoid || !m_system.datumCode.empty())
        return statusFailed;
    m_system.ellipsoid = ellipsoid->ellipsoid();
    m_system.ellipsoidCode = m_system.ellipsoid->code;
    copyCodes();
    return statusOk;
}

// What is asked about systems

Status CoordinateReferenceSystemOperation::Load(const CoordinateReferenceSystemDefinition* definition,
                                                CoordinateReferenceSystemOperation*& operation)
{
    operation = nullptr;
    if (Core::failsNow())
        return statusTrialFailure;
    if (!definition)
        return statusFailed;
    const bool isDatumBased = !definition->system().datumCode.empty();
    return hand(operation, new CoordinateReferenceSystemOperation(isDatumBased));
}

Status CoordinateReferenceSystemOperation::IsDatumBased(bool& answer) const
{
    answer = m_isDatumBased;
    return statusOk;
}

Status CoordinateReferenceSystemUtil::GetEllipsoid(const CoordinateReferenceSystemDefinition* definition,
                                                   EllipsoidDefinition*& ellipsoid)
{
    ellipsoid = nullptr;
    if (Core::failsNow())
        return statusTrialFailure;
    const auto found = definition ? Survey::ellipsoidUnder(definition->system()) : std::nullopt;
    return found ? hand(ellipsoid, new EllipsoidDefinition(*found)) : statusNotFound;
}

// Transformations and paths

GeodeticTransformationDefinition::GeodeticTransformationDefinition(const Survey::Shift& shift)
    : DefinitionBase(shift.name), m_isReversible(shift.isReversible)
{
}

Status GeodeticTransformationDefinition::Load(const wchar_t* name, GeodeticTransformationDefinition*& definition)
{
    return loadShift(name, false, definition);
}

Status GeodeticTransformationDefinition::IsReversible(bool& answer) const
{
    answer = m_isReversible;
    return statusOk;
}

GeodeticPathDefinition::GeodeticPathDefinition(const Survey::Shift& shift)
    : DefinitionBase(shift.name), m_isReversible(shift.isReversible)
{
}

Status GeodeticPathDefinition::Load(const wchar_t* name, GeodeticPathDefinition*& definition)
{
    return loadShift(name, true, definition);
}

Status GeodeticPathDefinition::IsReversible(bool& answer) const
{
    answer = m_isReversible;
    return statusOk;
}

Status TransformationInfo::CreateInstance(TransformationInfo*& info)
{
    info = nullptr;
    return Core::failsNow() ? statusTrialFailure : hand(info, new TransformationInfo());
}

Status TransformationInfo::SetName(const wchar_t* name)
{
    if (!name || Core::failsNow())
        return statusFailed;
    m_name = name;
    return statusOk;
}

Status TransformationInfo::SetKind(int kind)
{
    if (kind < 0 || kind > 2 || Core::failsNow())
        return statusFailed;
    m_kind = kind;
    return statusOk;
}

} // namespace Zentara::Infrastructure::SpatialReference
