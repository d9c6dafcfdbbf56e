#include "scenario/script.h"

namespace {

struct StepForm {
    StepKind kind;
    std::string_view name;
    std::size_t leastWords;
    std::size_t mostWords;
    std::string_view form;
};
constexpr std::size_t kAny = 1000;
constexpr StepForm kForms[] = {
    {StepKind::kOpen, "open", 2, 5, "open order|fill MODE [on order NUMBER | on fill NUMBER]"},
    {StepKind::kChoose, "choose", 2, 2, "choose CONTROL TEXT"},
    {StepKind::kType, "type", 2, 2, "type CONTROL TEXT"},
    {StepKind::kPress, "press", 1, 3, "press KEY [in CONTROL]"},
    {StepKind::kKeys, "keys", 1, kAny, "keys KEY|TEXT..."},
    {StepKind::kClick, "click", 1, 2, "click CONTROL [up|down]"},
    {StepKind::kPick, "pick", 1, kAny, "pick TREE-TEXT... [LIST-TEXT]"},
    {StepKind::kWait, "wait", 1, 1, "wait idle|closed"},
    {StepKind::kAnswer, "answer", 2, 4, "answer BUTTON TEXT [caption TEXT]"},
    {StepKind::kExpect, "expect", 1, kAny,
     "expect request OPERATION [FIELD=VALUE]... [bytes OFFSET:HEX]... | expect no request | "
     "expect order|fill NUMBER FIELD=VALUE... | expect title TEXT | expect keys NUMBER | "
     "expect CONTROL [shown|hidden|enabled|disabled|focused|checked|unchecked] [text TEXT]"},
    {StepKind::kFault, "fault", 1, kAny, "fault none | fault OPERATION KIND [at CALL] [for CALLS]"},
    {StepKind::kScreenshot, "screenshot", 1, 1, "screenshot NAME"},
};

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

class LineReader {
public:
    LineReader(std::string_view line, const std::string& file, int number)
        : m_rest(line), m_file(file), m_number(number) {}

    std::vector<Word> Words() {
        std::vector<Word> words;
        for (SkipBlanks(); !m_rest.empty() && !AtComment(); SkipBlanks()) {
            words.push_back(m_rest[0] == '"' ? Quoted() : Plain());
        }
        return words;
    }

private:
    void SkipBlanks() {
        while (!m_rest.empty() && IsBlank(m_rest[0])) {
            m_rest.remove_prefix(1);
        }
    }
    // "#1061" is a control by its number, so a comment has a blank behind its sign.
    bool AtComment() const { return m_rest[0] == '#' && (m_rest.size() == 1 || IsBlank(m_rest[1])); }

    Word Plain() {
        std::size_t end = 0;
        while (end < m_rest.size() && !IsBlank(m_rest[end])) {
            ++end;
        }
        Word word{std::string(m_rest.substr(0, end)), false};
        m_rest.remove_prefix(end);
        return word;
    }

    Word Quoted() {
        Word word{"", true};
        for (std::size_t i = 1; i < m_rest.size(); ++i) {
            if (m_rest[i] == '"') {
                m_rest.remove_prefix(i + 1);
                return word;
            }
            if (m_rest[i] == '\\' && i + 1 < m_rest.size()) {
                ++i;
                word.text += m_rest[i] == 'n' ? '\n' : m_rest[i];
            } else {
                word.text += m_rest[i];
            }
        }
        throw ScenarioError(m_file, m_number, "a quotation mark is not closed");
    }

    std::string_view m_rest;
    const std::string& m_file;
    int m_number;
};

std::string KnownSteps() {
    std::string names;
    for (const StepForm& form : kForms) {
        names += (names.empty() ? "" : ", ") + std::string(form.name);
    }
    return names;
}

Step ReadStep(std::vector<Word> words, std::string_view source, const std::string& file, int number) {
    for (const StepForm& form : kForms) {
        if (words[0].quoted || words[0].text != form.name) {
            continue;
        }
        words.erase(words.begin());
        if (words.size() < form.leastWords || words.size() > form.mostWords) {
            throw ScenarioError(file, number, "expected: " + std::string(form.form));
        }
        return {number, form.kind, std::move(words), std::string(source)};
    }
    throw ScenarioError(file, number,
                        "unknown step '" + words[0].text + "', expected one of " + KnownSteps());
}

}  // namespace

std::string_view FormOf(StepKind kind) {
    for (const StepForm& form : kForms) {
        if (form.kind == kind) {
            return form.form;
        }
    }
    return {};
}

Script ReadScript(std::string_view text, const std::string& file) {
    Script script{file, {}};
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        while (!line.empty() && IsBlank(line.back())) {
            line.remove_suffix(1);
        }
        std::vector<Word> words;
        if (!line.starts_with('#')) {
            words = LineReader(line, script.file, number).Words();
        }
        if (!words.empty()) {
            script.steps.push_back(ReadStep(std::move(words), line, script.file, number));
        }
    }
    return script;
}
