#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// A scenario as text: one step a line, words between blanks, a text with blanks in double quotes.
// docs/scenarios.md describes the steps.

// Player::Run has its functions in this order.
enum class StepKind {
    kOpen,
    kChoose,
    kType,
    kPress,
    kKeys,
    kClick,
    kPick,
    kWait,
    kAnswer,
    kExpect,
    kFault,
    kScreenshot
};

struct Word {
    std::string text;
    bool quoted;  // then it is only itself: no number, code, string id or wildcard
};

struct Step {
    int line;
    StepKind kind;
    std::vector<Word> words;  // without the first, which is the kind
    std::string source;       // the line as it stands
};

struct Script {
    std::string file;
    std::vector<Step> steps;
};

// A scenario that cannot be read or did not go as it says. what() begins with file and line.
class ScenarioError : public std::runtime_error {
public:
    ScenarioError(const std::string& file, int line, const std::string& reason)
        : std::runtime_error(file + ':' + std::to_string(line) + ": " + reason) {}
};

// `file` is what messages call it. Throws ScenarioError for a step that does not exist or has the wrong
// number of words, and for a quotation mark that is not closed.
Script ReadScript(std::string_view text, const std::string& file);

// How a step of this kind is written, for messages.
std::string_view FormOf(StepKind kind);
