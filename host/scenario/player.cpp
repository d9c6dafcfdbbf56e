#include "scenario/player.h"

#include "scenario/picture.h"
#include "scenario/text_pattern.h"
#include "scenario/window_text.h"

#include <charconv>
#include <cstdio>

namespace {

constexpr unsigned kPatience = 3000;  // milliseconds until an expectation has failed
constexpr unsigned kBoxDelay = 10;

struct ButtonName {
    std::string_view name;
    int id;
};
constexpr ButtonName kButtons[] = {{"ok", IDOK}, {"cancel", IDCANCEL}, {"yes", IDYES}, {"no", IDNO}};

}  // namespace

Player::Player(const Script& script, HostApp& host, PlayerSettings settings)
    : m_script(script),
      m_host(host),
      m_settings(std::move(settings)),
      m_operator(host, m_settings.pause),
      m_boxes([this](const OpenBox& box) { OnBox(box); }, m_settings.pause ? m_settings.pause : kBoxDelay) {}

Player::~Player() {
    m_host.CloseDialogs();
    if (IsWindow(m_parent)) {
        DestroyWindow(m_parent);
    }
}

std::string Player::Play() {
    try {
        PlayAll();
    } catch (const std::exception& error) {
        Fail(error.what());
    }
    return m_failure;
}

void Player::PlayAll() {
    Parent();
    while (m_next < m_script.steps.size() && m_failure.empty()) {
        const Step& step = m_script.steps[m_next];
        if (step.kind == StepKind::kAnswer) {
            AwaitAnswer(step);
            continue;
        }
        ++m_next;
        Begin(step);
        try {
            Run(step);
        } catch (const std::invalid_argument& error) {
            Refuse(step, error.what());
        }
        m_operator.Rest(m_settings.pause);
    }
    const std::vector<std::string>& requests = m_host.Services().journal.Lines();
    if (m_failure.empty() && m_current && m_requests < requests.size()) {
        Refuse(*m_current, "the scenario ends, and nothing expected the request " +
                               Json::parse(requests[m_requests]).value("operation", ""));
    }
}

void Player::Begin(const Step& step) {
    m_current = &step;
    std::printf("%5d  %s\n", step.line, step.source.c_str());
    std::fflush(stdout);
    if (m_settings.onStep) {
        m_settings.onStep(step);
    }
}

void Player::Run(const Step& step) {
    static constexpr void (Player::*kSteps[])(const Step&) = {
        &Player::Open,        &Player::Choose, &Player::Type,     &Player::Press,
        &Player::Keys,        &Player::Click,  &Player::Pick,     &Player::Wait,
        &Player::AwaitAnswer, &Player::Expect, &Player::SetFault, &Player::Screenshot};
    (this->*kSteps[static_cast<std::size_t>(step.kind)])(step);
}

void Player::Refuse(const Step& step, const std::string& reason) const {
    throw ScenarioError(m_script.file, step.line, reason);
}

void Player::Fail(const std::string& what) {
    if (!m_failure.empty()) {
        return;
    }
    m_failure = what;
    if (!m_settings.out.empty()) {
        const std::string path = PicturePath("failed-" + m_settings.name);
        m_failure += SavePicture(nullptr, path) ? "\n  picture: " + path : "\n  no picture could be taken";
    }
}

bool Player::Await(const std::function<bool()>& condition) {
    return m_host.PumpUntil([&] { return !m_failure.empty() || condition(); }, kPatience);
}

HWND Player::Parent() {
    if (!IsWindow(m_parent)) {
        m_parent = CreateWindowExW(0, L"Static", L"Terminal", WS_OVERLAPPEDWINDOW | WS_VISIBLE | SS_WHITERECT,
                                   0, 0, 1100, 900, nullptr, nullptr, nullptr, nullptr);
        m_host.PumpUntilIdle();
    }
    return m_parent;
}

// --- questions ---

void Player::OnBox(const OpenBox& box) {
    try {
        while (m_failure.empty() && m_next < m_script.steps.size()) {
            const Step& step = m_script.steps[m_next];
            if (step.kind != StepKind::kScreenshot && step.kind != StepKind::kAnswer) {
                break;
            }
            ++m_next;
            Begin(step);
            if (step.kind == StepKind::kAnswer) {
                return Answer(step, box);
            }
            Screenshot(step);
        }
        if (m_failure.empty() && m_current) {
            Refuse(*m_current, "then a question was left open: \"" + box.text + "\" (" + box.caption + ')');
        }
    } catch (const std::exception& error) {
        Fail(error.what());
    }
    box.Dismiss();
}

void Player::AwaitAnswer(const Step& step) {
    const std::size_t index = m_next;
    if (!Await([&] { return m_next != index; })) {
        Begin(step);
        Refuse(step, "no question came");
    }
}

void Player::Answer(const Step& step, const OpenBox& box) {
    const auto differs = [&](const char* what, const std::string& found, const Word& word) {
        const std::string pattern = Pattern(step, word, CodeList::kNone);
        if (!Matches(found, pattern)) {
            Refuse(step, "the question's " + std::string(what) + " is \"" + found + "\", expected \"" +
                             ShowPattern(pattern) + '"');
        }
    };
    differs("text", box.text, step.words[1]);
    if (step.words.size() > 2) {
        if (step.words.size() != 4 || step.words[2].text != "caption") {
            Refuse(step, "expected: " + std::string(FormOf(step.kind)));
        }
        differs("caption", box.caption, step.words[3]);
    }
    for (const ButtonName& button : kButtons) {
        if (step.words[0].text == button.name) {
            if (!box.Press(button.id)) {
                Refuse(step, "the question has no button '" + step.words[0].text + '\'');
            }
            return;
        }
    }
    Refuse(step, "no button is called '" + step.words[0].text + "', expected one of ok, cancel, yes, no");
}

// --- controls ---

Player::Control Player::Find(const Step& step, const std::string& name) const {
    if (!IsWindow(m_dialog)) {
        Refuse(step, "no dialog is open");
    }
    const std::optional<NamedControl> named = FindControl(name, m_kind);
    const HWND window = named ? GetDlgItem(m_dialog, named->id) : nullptr;
    if (!window) {
        Refuse(step, "the dialog has no control '" + name + '\'');
    }
    return {window, named->codes, name};
}

Player::Control Player::FindUsable(const Step& step, const std::string& name) const {
    const Control control = Find(step, name);
    if (const std::string reason = UnusableBecause(control.window); !reason.empty()) {
        Refuse(step, "control '" + name + "' " + reason);
    }
    return control;
}

std::string Player::Pattern(const Step& step, const Word& word, CodeList codes) const {
    constexpr std::string_view kString = "string:";
    constexpr std::string_view kCode = "code:";
    const std::string_view text = word.text;
    const auto resource = [&](unsigned id) {
        const std::string found = ModuleString(m_host.Module()->Library(), id, m_settings.language);
        if (found.empty()) {
            Refuse(step, "the module has no string " + std::to_string(id));
        }
        return PatternFromFormat(found);
    };
    if (word.quoted) {
        return word.text;
    }
    if (text.starts_with(kCode)) {
        const unsigned id = text.size() == kCode.size() + 1 ? StringOfCode(codes, text.back()) : 0;
        if (!id) {
            Refuse(step, "'" + word.text + "' is no code of this list");
        }
        return resource(id);
    }
    if (!text.starts_with(kString)) {
        return PatternFromWildcards(text);
    }
    std::string pattern;
    const char* at = text.data() + kString.size();
    const char* const end = text.data() + text.size();
    for (;;) {
        unsigned id = 0;
        const auto [stop, error] = std::from_chars(at, end, id);
        if (error != std::errc() || (stop != end && *stop != '+')) {
            Refuse(step, "'" + word.text + "' is no string:ID or string:ID+ID");
        }
        pattern += resource(id);
        if (stop == end) {
            return pattern;
        }
        at = stop + 1;
    }
}
