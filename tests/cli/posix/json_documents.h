// Keeps what the program prints with --json, for the check against the JSON Schemas.
#pragma once

#include <string>
#include <vector>

namespace Tests {

/// Adds what a run with --json printed to the file that ORVEL_JSON_DOCUMENTS names. `ctest` names one for each process
/// of the tests, and check_json_documents.py reads them afterwards. The first call of a process empties the file. Does
/// nothing without the variable, or for a run without --json or without output.
void recordDocument(const std::vector<std::string>& arguments, const std::string& output);

} // namespace Tests
