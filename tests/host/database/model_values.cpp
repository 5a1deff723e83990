#include "host/database/model_values.h"

#include <cstring>

namespace Tests {
namespace {

resbuf* newItem(int code, int number)
{
    char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    const QeBinaryChunk chunk{sizeof bytes, bytes};
    switch (qeutValueKind(code)) {
    case QeRb::ValueKind::string:
        return qeutBuildList(code, std::to_wstring(number).c_str(), QeRb::kListEnd);
    case QeRb::ValueKind::binary:
        return qeutBuildList(code, &chunk, QeRb::kListEnd);
    case QeRb::ValueKind::real:
        return qeutBuildList(code, number / kModelScale, QeRb::kListEnd);
    default:
        return qeutBuildList(code, number, QeRb::kListEnd);
    }
}

int numberOf(const resbuf& item)
{
    int number = -1;
    switch (qeutValueKind(item.restype)) {
    case QeRb::ValueKind::string:
        return std::stoi(item.resval.rstring);
    case QeRb::ValueKind::binary:
        if (item.resval.rbinary.clen == sizeof number)
            std::memcpy(&number, item.resval.rbinary.buf, sizeof number);
        return number;
    case QeRb::ValueKind::real:
        return static_cast<int>(item.resval.rreal * kModelScale);
    case QeRb::ValueKind::integer16:
        return item.resval.rint;
    default:
        return item.resval.rlong;
    }
}

} // namespace

resbuf* newChain(const DrawingModel::Values& values)
{
    resbuf* first = nullptr;
    for (auto value = values.rbegin(); value != values.rend(); ++value) {
        resbuf* item = newItem(value->first, value->second);
        item->rbnext = first;
        first = item;
    }
    return first;
}

DrawingModel::Values modelValues(const resbuf* chain)
{
    DrawingModel::Values values;
    for (; chain != nullptr; chain = chain->rbnext)
        values.emplace_back(chain->restype, numberOf(*chain));
    return values;
}

} // namespace Tests
