#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {

std::string codeOfObject(const PJ* object)
{
    const char* authority = proj_get_id_auth_name(object, 0);
    const char* code = proj_get_id_code(object, 0);
    return authority && code ? CatalogCode{authority, code}.text() : std::string();
}

std::string originalCodeOf(const PJ* object)
{
    auto code = splitCode(codeOfObject(object));
    if (!code)
        return {};
    const auto innermost = code->authority.rfind('(');
    if (innermost != std::string::npos)
        code->authority = code->authority.substr(innermost + 1, code->authority.find(')') - innermost - 1);
    return code->text();
}

} // namespace Embedded
