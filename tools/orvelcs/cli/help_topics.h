// What concerns several commands: the topics of `help`, and the general sections of the pages.
#pragma once

#include <string>
#include <vector>

namespace Orvelcs {

struct HelpTopic {
    std::string name;  // "exit-status"
    std::string title; // "Exit status"
    std::string text;  // see text_blocks.h for its form
};

const std::vector<HelpTopic>& helpTopics();
/// "a, b and c".
std::string helpTopicNames();

} // namespace Orvelcs
