#include "cli/posix/json_documents.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <mutex>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace Tests {
namespace {

bool wantsJson(const std::vector<std::string>& arguments)
{
    const auto end = std::ranges::find(arguments, "--");
    return std::find(arguments.begin(), end, "--json") != end;
}

std::string nameOfTest()
{
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    return test ? std::string(test->test_suite_name()) + "." + test->name() : "";
}

} // namespace

void recordDocument(const std::vector<std::string>& arguments, const std::string& output)
{
    const char* file = std::getenv("ORVEL_JSON_DOCUMENTS");
    if (file == nullptr || output.empty() || !wantsJson(arguments))
        return;
    const nlohmann::ordered_json record = {{"test", nameOfTest()}, {"arguments", arguments}, {"output", output}};
    static std::mutex mutex; // tests run the program in threads
    const std::lock_guard lock(mutex);
    static std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << std::endl;
}

} // namespace Tests
