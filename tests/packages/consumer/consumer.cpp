// Assigns a coordinate system while a reactor is registered, and reads it, using only the public headers.
#include <cwchar>
#include <iostream>

#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/orvel_transformation_config.h"

using namespace Zentara::Gis::Orvel::CoordinateSystem;

namespace {

class Listener : public OrvelCoordinateSystemReactor {
public:
    int changes = 0;

private:
    void CoordinateSystemChanged(QeDbDatabase*, const wchar_t*) override { ++changes; }
};

bool hasCode(QeDbDatabase& drawing, const wchar_t* expected)
{
    wchar_t* code = nullptr;
    const bool matches =
        GetCoordinateSystem(code, &drawing) == Qeapp::eOk && code != nullptr && std::wcscmp(code, expected) == 0;
    qeutDelBuffer(code);
    return matches;
}

} // namespace

int main()
{
    QeDbDatabase drawing;
    Listener listener;
    bool works = AddCoordinateSystemReactor(&listener) == Qeapp::eOk;
    works = works && SetCoordinateSystem(L"EPSG:25832", &drawing) == Qeapp::eOk;
    works = works && RemoveCoordinateSystemReactor(&listener) == Qeapp::eOk;
    works = works && hasCode(drawing, L"EPSG:25832") && listener.changes > 0;
    works = works && GetCsConfiguredTransformationInfo(L"EPSG:4230", nullptr) == nullptr;
    std::cout << (works ? "consumer: the drawing has its coordinate system\n" : "consumer: failed\n");
    return works ? 0 : 1;
}
