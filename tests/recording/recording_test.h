// The fixture for the recording library. Each test begins without recorded calls and answers.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "coordsys/orvel_coordinate_system.h"
#include "recording/recorder.h"
#include "storage/definition_code.h"
#include "storage/packed_definition.h"
#include "support/drawing.h"
#include "support/library_definitions.h"
#include "support/platform_test.h"

namespace Tests {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
using Recording::answers;
using Recording::Definition;
using Recording::Type;
using testing::ElementsAre;

/// The three definitions of a system that refers to the Earth through a datum.
inline const Definition kSystem{.code = L"MINE:1", .datumCode = L"MINE:2", .ellipsoidCode = L"MINE:3"};
inline const Definition kDatum{.type = Type::datum, .code = L"MINE:2", .ellipsoidCode = L"MINE:3"};
inline const Definition kEllipsoid{.type = Type::ellipsoid, .code = L"MINE:3"};

using DefinitionHolder = Orvel::LibraryObject<Library::DefinitionBase>;

class RecordingTest : public PlatformTest {
protected:
    RecordingTest() { Recording::forget(); }
    ~RecordingTest() override { Recording::forget(); }

    Drawing drawing;
    Library::Status status = Library::statusOk;

    QeDbDatabase* database() const { return drawing.database(); }

    static SystemHolder system(const Definition& definition = kSystem)
    {
        return SystemHolder(Recording::newSystem(definition));
    }
    static Bytes packed(const Definition& definition)
    {
        const DefinitionHolder holder(Recording::newDefinition(definition));
        Bytes bytes;
        EXPECT_TRUE(Orvel::EncodeDefinitionBytes(holder.get(), bytes));
        return bytes;
    }
    static void fail(const std::string& call) { answers().statuses[call] = Library::statusFailed; }

    /// Stores a legacy code and a definition xrecord with a group for each definition.
    void storeXrecord(const std::wstring& code, const std::vector<Definition>& definitions)
    {
        Items items{{1071, 1}};
        for (const Definition& each : definitions) {
            items.push_back({1002, L"{"});
            items.push_back({310, packed(each)});
            items.push_back({1002, L"}"});
        }
        drawing.withLegacyCode(code).withXrecord(items);
    }

    /// Reads the drawing and returns the codes of its definitions. Returns none if they cannot be read.
    Texts read()
    {
        ArrayHolder definitions;
        result = Cs::GetCoordinateSystem(definitions.put(), database(), &status);
        Texts codes;
        for (int index = 0; definitions && index < definitions->GetCount(); ++index)
            codes.push_back(Orvel::definitionCode(definitions->GetItem(index)));
        return codes;
    }
    Qeapp::ErrorStatus result = Qeapp::eOk;
};

} // namespace Tests
