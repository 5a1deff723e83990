#include "shift_grid.h"

#include <cstdint>
#include <cstring>

#include <proj.h>

namespace Tests {
namespace {

/// The bytes of an NTv2 grid in this machine's byte order. PROJ reads it under any file name.
class ShiftGrid {
public:
    static std::string bytes()
    {
        ShiftGrid grid;
        grid.writeFileHeader();
        grid.writeGridHeader();
        for (int node = 0; node < 3 * 3; ++node)
            for (const float value : {3.6F, -7.2F, 0.0F, 0.0F}) // north, west and their accuracies
                grid.write(value);
        grid.text("END", "");
        return grid.bytes_;
    }

private:
    void writeFileHeader()
    {
        integer("NUM_OREC", 11);
        integer("NUM_SREC", 11);
        integer("NUM_FILE", 1);
        text("GS_TYPE", "SECONDS");
        text("VERSION", "NTv2.0");
        text("SYSTEM_F", "HERE");
        text("SYSTEM_T", "THERE");
        for (const char* axis : {"MAJOR_F", "MINOR_F", "MAJOR_T", "MINOR_T"})
            number(axis, 6378137);
    }
    void writeGridHeader()
    {
        constexpr double kSecondsInADegree = 3600;
        text("SUB_NAME", "TEST");
        text("PARENT", "NONE");
        text("CREATED", "");
        text("UPDATED", "");
        number("S_LAT", 35 * kSecondsInADegree);
        number("N_LAT", 45 * kSecondsInADegree);
        number("E_LONG", 95 * kSecondsInADegree); // positive to the west
        number("W_LONG", 105 * kSecondsInADegree);
        number("LAT_INC", 5 * kSecondsInADegree);
        number("LONG_INC", 5 * kSecondsInADegree);
        integer("GS_COUNT", 3 * 3);
    }

    template <class Value>
    void write(const Value& value)
    {
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        bytes_.append(raw, sizeof value);
    }
    void padded(std::string text)
    {
        text.resize(8, ' ');
        bytes_ += text;
    }
    void text(const char* key, const char* value)
    {
        padded(key);
        padded(value);
    }
    void number(const char* key, double value)
    {
        padded(key);
        write(value);
    }
    void integer(const char* key, std::int32_t value)
    {
        padded(key);
        write(value);
        write(std::int32_t{0});
    }

    std::string bytes_;
};

} // namespace

GridTest::GridTest()
{
    std::filesystem::create_directories(path("data"));
    std::filesystem::copy_file(proj_context_get_database_path(PJ_DEFAULT_CTX), path("data/proj.db"));
}

void GridTest::givenGrid(const std::string& folder) const
{
    std::filesystem::create_directories(path(folder));
    given(folder + "/" + kGrid, ShiftGrid::bytes());
}

ProgramResult GridTest::runWithGrids(const Arguments& arguments, const std::string& input) const
{
    ProgramRun programRun;
    programRun.arguments = arguments;
    programRun.environment["PROJ_DATA"] = path("data").string();
    programRun.environment["PROJ_USER_WRITABLE_DIRECTORY"] = path("downloads").string();
    programRun.input = input;
    return run(programRun);
}

} // namespace Tests
