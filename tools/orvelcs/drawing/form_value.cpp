#include "orvelcs/drawing/form_value.h"

#include <map>
#include <memory>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/drawing/resbuf_json.h"
#include "orvelcs/drawing/stored_forms.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

const std::map<std::string, Form>& formsByName()
{
    static const std::map<std::string, Form> kForms = {{"legacy", Form::legacy},
                                                       {"legacy-chain", Form::legacyChain},
                                                       {"xrecord-chain", Form::definitionChain},
                                                       {"geodata", Form::geoData},
                                                       {"config", Form::configuration}};
    return kForms;
}

std::vector<std::string> formNames()
{
    std::vector<std::string> names;
    for (const auto& [name, form] : formsByName())
        names.push_back(name);
    return names;
}

std::string nearestFormsClause(const std::string& name)
{
    const std::vector<std::string> similar = nearest(name, formNames());
    return similar.empty() ? fmt::format("; there are {}", fmt::join(formNames(), ", ")) : nearestClause(similar);
}

void requireWritten(Qeapp::ErrorStatus result, const std::string& form)
{
    if (result != Qeapp::eOk)
        throw Failure(form, "the host refused it: " + resultName(result));
}

HostObject<QeDbDictionary> openForWriting(QeDbDatabase* database, const std::string& form)
{
    HostObject<QeDbDictionary> namedObjects;
    requireWritten(database->getNamedObjectsDictionary(namedObjects.put(), QeDb::kForWrite), form);
    return namedObjects;
}

ResbufList textBuffer(int groupCode, const wchar_t* text)
{
    ResbufList buffer(qeutBuildList(groupCode, text, QeRb::kListEnd));
    if (!buffer)
        throw std::bad_alloc();
    return buffer;
}

void registerLegacyApplication(QeDbDatabase* database, const std::string& form)
{
    HostObject<QeDbRegAppTable> table;
    requireWritten(database->getRegAppTable(table.put(), QeDb::kForWrite), form);
    if (table->has(kLegacyApplication))
        return;
    HostObject<QeDbRegAppTableRecord> record(new QeDbRegAppTableRecord);
    requireWritten(record->setName(kLegacyApplication), form);
    QeDbObjectId id;
    requireWritten(table->add(id, record.get()), form);
}

// `values` follow the application's name; without values the record is removed.
void putLegacyChain(QeDbDatabase* database, const FormValue& value, ResbufList values)
{
    const bool namesApplication = values && values->restype == QeRb::kXdataAppName;
    if (namesApplication && std::wstring_view(values->resval.rstring) != kLegacyApplication)
        throw Failure(value.name,
                      fmt::format("[0]: the application must be {}", Embedded::utf8FromWide(kLegacyApplication)));
    ResbufList chain = std::move(values);
    if (!namesApplication) {
        ResbufList named = textBuffer(QeRb::kXdataAppName, kLegacyApplication);
        named->rbnext = chain.release();
        chain = std::move(named);
    }
    registerLegacyApplication(database, value.name);
    const auto namedObjects = openForWriting(database, value.name);
    requireWritten(namedObjects->setXData(chain.get()), value.name);
}

void putLegacyCode(QeDbDatabase* database, const FormValue& value)
{
    const std::wstring code = Embedded::wideFromUtf8(value.value);
    putLegacyChain(database, value, code.empty() ? ResbufList() : textBuffer(QeRb::kXdataString, code.c_str()));
}

void putXrecord(QeDbDictionary& dictionary, const wchar_t* key, const resbuf* chain, QeDbDatabase* database,
                const std::string& form)
{
    HostObject<QeDbXrecord> xrecord(new QeDbXrecord);
    requireWritten(xrecord->setFromRbChain(chain, database), form);
    QeDbObjectId id;
    requireWritten(dictionary.setAt(key, xrecord.get(), id), form);
}

void putDefinitionChain(QeDbDatabase* database, const FormValue& value)
{
    const auto namedObjects = openForWriting(database, value.name);
    if (value.value.empty()) {
        if (namedObjects->has(kDefinitionKey))
            requireWritten(namedObjects->remove(kDefinitionKey), value.name);
        return;
    }
    const ResbufList chain = resbufsFromJson(value.name, value.value);
    putXrecord(*namedObjects, kDefinitionKey, chain.get(), database, value.name);
}

HostObject<QeDbGeoData> newGeoData(QeDbDatabase* database, const std::string& form)
{
    QeDbObjectId modelSpace;
    requireWritten(qedbSymUtil()->blockModelSpaceId(database, modelSpace), form);
    HostObject<QeDbGeoData> geoData(new QeDbGeoData);
    requireWritten(geoData->setBlockTableRecordId(modelSpace), form);
    QeDbObjectId id;
    requireWritten(geoData->postToDb(id), form);
    return geoData;
}

void putGeoData(QeDbDatabase* database, const FormValue& value)
{
    HostObject<QeDbGeoData> geoData;
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(database, id) == Qeapp::eOk && !id.isNull())
        requireWritten(geoData.open(id, QeDb::kForWrite), value.name);
    else if (!value.value.empty())
        geoData = newGeoData(database, value.name);
    if (geoData)
        requireWritten(geoData->setCoordinateSystem(Embedded::wideFromUtf8(value.value).c_str()), value.name);
}

HostObject<QeDbDictionary> configurationDictionary(QeDbDatabase* database, const std::string& form)
{
    const auto namedObjects = openForWriting(database, form);
    QeDbObjectId id;
    HostObject<QeDbDictionary> dictionary;
    if (namedObjects->getAt(kConfigurationDictionary, id) == Qeapp::eOk) {
        requireWritten(dictionary.open(id, QeDb::kForWrite), form);
        return dictionary;
    }
    dictionary.reset(new QeDbDictionary);
    requireWritten(namedObjects->setAt(kConfigurationDictionary, dictionary.get(), id), form);
    return dictionary;
}

void putConfiguration(QeDbDatabase* database, const FormValue& value)
{
    const HostObject<QeDbDictionary> dictionary = configurationDictionary(database, value.name);
    const ResbufList chain = textBuffer(QeRb::kText, Embedded::wideFromUtf8(value.value).c_str());
    putXrecord(*dictionary, kConfigurationKey, chain.get(), database, value.name);
}

} // namespace

FormValue parseFormValue(const std::string& argument)
{
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos)
        throw wrongUsage("--put", "expected FORM=VALUE, found " + argument);
    const std::string name = argument.substr(0, equals);
    const auto form = formsByName().find(name);
    if (form == formsByName().end())
        throw wrongUsage("--put", name + " is not a form" + nearestFormsClause(name));
    if (!Embedded::isValidUtf8(argument))
        throw wrongUsage("--put", "the value of " + name + " is not UTF-8");
    return {form->second, name, argument.substr(equals + 1)};
}

void putForm(QeDbDatabase* database, const FormValue& value)
{
    switch (value.form) {
    case Form::legacy:
        return putLegacyCode(database, value);
    case Form::legacyChain:
        return putLegacyChain(database, value,
                              value.value.empty() ? ResbufList() : resbufsFromJson(value.name, value.value));
    case Form::definitionChain:
        return putDefinitionChain(database, value);
    case Form::geoData:
        return putGeoData(database, value);
    case Form::configuration:
        return putConfiguration(database, value);
    }
}

} // namespace Orvelcs
