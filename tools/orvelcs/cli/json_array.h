// A JSON array that is printed while its elements are made.
#pragma once

#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// Prints nothing unless JSON is wanted. The text is the same as that of a document with the whole array. The array is
/// closed by `close` or at the end of the scope, whatever ended it.
class JsonArray {
public:
    /// `output` must outlive it.
    explicit JsonArray(Output& output);
    JsonArray(const JsonArray&) = delete;
    JsonArray& operator=(const JsonArray&) = delete;
    ~JsonArray() { close(); }

    void add(const Json& element);
    void close();

private:
    Output& output_;
    bool isOpen_;
    bool isEmpty_ = true;
};

} // namespace Orvelcs
