// The hooks of port_check for the strictest platform, whose calls are stubs that fail. Nothing reads the drawing.
#include "examples/port/port_check.h"

namespace PortCheck {

QeDbDatabase* newDrawing()
{
    alignas(std::max_align_t) static char drawing[1];
    return reinterpret_cast<QeDbDatabase*>(drawing);
}

void closeDrawing(QeDbDatabase* /*drawing*/)
{
}

bool prepareForSave(QeDbDatabase* /*drawing*/, QeDb::QeDbDwgVersion /*version*/)
{
    return false;
}

Systems systems()
{
    return {.projected = L"A:1", .geographic = L"A:2", .userDefinedCode = L"MINE:1", .userDefinedText = L"mine"};
}

bool loadModule()
{
    return false;
}

bool unloadModule()
{
    return false;
}

bool failCall(std::size_t /*number*/)
{
    return false;
}

Calls callsMade()
{
    return {};
}

std::string heldNow()
{
    return {};
}

} // namespace PortCheck
