#include "sweep/drawing_contents.h"

#include <sstream>
#include <utility>
#include <vector>

namespace Tests {
namespace {

struct ObjectText {
    std::string className;
    std::string lines;                                        // without handles
    std::vector<std::pair<std::string, std::string>> entries; // keys and handles
};

using ObjectTexts = std::map<std::string, ObjectText>;

ObjectTexts parseObjects(const std::string& contents)
{
    ObjectTexts objects;
    ObjectText* current = nullptr;
    std::istringstream lines(contents);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word;
        words >> word;
        if (word == "object") {
            std::string handle;
            words >> handle;
            current = &objects[handle];
            words >> current->className;
        } else if (word == "entry") {
            const std::size_t end = line.rfind(' ');
            current->entries.emplace_back(line.substr(0, end), line.substr(end + 1));
        } else if (current != nullptr && word != "record" && word != "block") {
            current->lines += line + "\n";
        }
    }
    return objects;
}

void addWithEntries(const ObjectTexts& objects, const std::string& handle, const std::string& path,
                    ObjectsByPath& found)
{
    const ObjectText& object = objects.at(handle);
    if (object.className != "QeDbDictionary" || !object.lines.empty())
        found.emplace(path, object.className + "\n" + object.lines);
    for (const auto& [key, entry] : object.entries)
        addWithEntries(objects, entry, path + "/" + key, found);
}

} // namespace

ObjectsByPath objectsByPath(const std::string& contents)
{
    constexpr const char* kNamedObjects = "1"; // the handle that every drawing gives its first root
    const ObjectTexts objects = parseObjects(contents);
    ObjectsByPath found;
    addWithEntries(objects, kNamedObjects, "", found);
    for (const auto& [handle, object] : objects) {
        if (object.className == "QeDbGeoData")
            found.emplace("GeoData", object.lines);
    }
    return found;
}

} // namespace Tests
