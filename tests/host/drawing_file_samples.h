// Drawings for the tests of drawing files, as texts and as images.
#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <set>
#include <string>

#include "embedded/host/drawing_image.h"

namespace Tests {

/// The example of docs/formats/drawing-file.md, word for word, and the image that it describes.
std::string exampleText();
Embedded::DrawingImage exampleImage();

/// The text with the one place where `from` stands changed; fails the test when there is no such place or more.
std::string edited(std::string text, const std::string& from, const std::string& to);

std::string contentsOf(const std::filesystem::path& file);
void put(const std::filesystem::path& file, const std::string& contents);
/// Of everything in the folder.
std::set<std::string> namesIn(const std::filesystem::path& folder);

/// Valid images of every kind of object and value, with texts that are hard on an encoder.
class RandomImages {
public:
    explicit RandomImages(std::uint64_t seed) : random_(seed) {}
    Embedded::DrawingImage next();

private:
    std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
    std::wstring text(std::size_t leastCharacters);
    Embedded::ImageValue value(bool inExtendedData);
    Embedded::ImageChain chain(std::size_t leastValues, bool inExtendedData);
    Embedded::ObjectImage& add(Embedded::Handle owner, decltype(Embedded::ObjectImage::contents) contents);
    void addRegisteredApplications();
    void addBlocks();
    void addDictionaryContents();
    void addExtendedData();

    std::mt19937_64 random_;
    Embedded::DrawingImage image_;
};

} // namespace Tests
