#include "scenario/player.h"

#include "scenario/picture.h"
#include "scenario/text_pattern.h"
#include "scenario/window_text.h"

#include <charconv>
#include <cstdio>

namespace {

constexpr unsigned kPatience = 3000;  // milliseconds until an expectation has failed
constexpr unsigned kBoxDelay = 10;

struct ModeName {
    std::string_view dialog;
    std::string_view name;
    int mode;
};
constexpr ModeName kModes[] = {
    {"order", "input", 0},  {"order", "carry", 1}, {"order", "modify", 2}, {"order", "remove", 3},
    {"order", "move", 4},   {"order", "exercise", 5}, {"fill", "full", 0}, {"fill", "input", 1},
    {"fill", "modify", 2},  {"fill", "remove", 3},
};

struct ButtonName {
    std::string_view name;
    int id;
};
constexpr ButtonName kButtons[] = {{"ok", IDOK}, {"cancel", IDCANCEL}, {"yes", IDYES}, {"no", IDNO}};

constexpr char kTreeClass[] = "SysTreeView32";
constexpr char kListClass[] = "SysListView32";

BOOL CALLBACK FindPicker(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && FindWindowExA(window, nullptr, kTreeClass, nullptr)) {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

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
    switch (step.kind) {
        case StepKind::kOpen: return Open(step);
        case StepKind::kChoose: return Choose(step);
        case StepKind::kType: return Type(step);
        case StepKind::kPress: return Press(step);
        case StepKind::kClick: return Click(step);
        case StepKind::kPick: return Pick(step);
        case StepKind::kWait: return Wait(step);
        case StepKind::kAnswer: return AwaitAnswer(step);
        case StepKind::kExpect: return Expect(step);
        case StepKind::kFault: return SetFault(step);
        case StepKind::kScreenshot: return Screenshot(step);
    }
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
        m_parent = CreateWindowExW(0, L"Static", L"Terminal", WS_OVERLAPPEDWINDOW | WS_VISIBLE | SS_WHITERECT, 0,
                                   0, 1100, 900, nullptr, nullptr, nullptr, nullptr);
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

// --- steps ---

void Player::Open(const Step& step) {
    const std::string& dialog = step.words[0].text;
    const std::string& mode = step.words[1].text;
    const ModeName* found = nullptr;
    for (const ModeName& row : kModes) {
        if (row.dialog == dialog && row.name == mode) {
            found = &row;
        }
    }
    const bool onRecord = step.words.size() == 5 && step.words[2].text == "on";
    if (!found || (step.words.size() != 2 && !onRecord)) {
        Refuse(step, "expected: " + std::string(FormOf(step.kind)) +
                         "; MODE of an order: input, carry, modify, remove, move, exercise; of a fill: full, "
                         "input, modify, remove");
    }
    OrderEntry* order = nullptr;
    FillEntry* fill = nullptr;
    if (onRecord) {
        const std::string& number = step.words[4].text;
        const Ledger& ledger = m_host.TheBook().ledger;
        if (step.words[3].text == "order") {
            order = ledger.FindOrder(static_cast<std::uint32_t>(std::strtoul(number.c_str(), nullptr, 10)));
        } else if (step.words[3].text == "fill") {
            fill = ledger.FindFill(number);
        }
        if (!order && !fill) {
            Refuse(step, "the book has no " + step.words[3].text + ' ' + number);
        }
    }
    m_kind = dialog == "order" ? DialogKind::kOrder : DialogKind::kFill;
    const int kind = fill ? kRecordKindFill : kRecordKindOrder;
    void* record = fill ? static_cast<void*>(&fill->record) : order ? &order->record : nullptr;
    IEmendixOper* opened = m_kind == DialogKind::kOrder
                               ? m_host.OpenOrderDialog(found->mode, order ? &order->record : nullptr, Parent())
                               : m_host.OpenFillDialog(found->mode, record, kind, Parent());
    m_dialog = opened ? opened->GetSafeHwnd() : nullptr;
    if (!m_dialog) {
        Refuse(step, "the module opened no dialog");
    }
    m_host.PumpUntilIdle();
    m_operator.Rest(20);  // what the dialog does when it has been shown
}

void Player::Choose(const Step& step) {
    const Control control = FindUsable(step, step.words[0].text);
    const std::string text = Pattern(step, step.words[1], control.codes);
    if (const std::string reason = m_operator.Choose(control.window, text); !reason.empty()) {
        Refuse(step, "control '" + control.name + "' " + reason);
    }
}

void Player::Type(const Step& step) {
    m_operator.Type(FindUsable(step, step.words[0].text).window, step.words[1].text);
}

void Player::Press(const Step& step) {
    const std::optional<unsigned> key = Operator::KeyNamed(step.words[0].text);
    if (!key) {
        Refuse(step, "no key is called '" + step.words[0].text + '\'');
    }
    if (step.words.size() > 1) {
        if (step.words.size() != 3 || step.words[1].text != "in") {
            Refuse(step, "expected: " + std::string(FormOf(step.kind)));
        }
        m_operator.Focus(FindUsable(step, step.words[2].text).window);
    }
    m_operator.Key(*key);
}

void Player::Click(const Step& step) {
    const Control control = FindUsable(step, step.words[0].text);
    if (step.words.size() == 1) {
        return m_operator.Click(control.window);
    }
    const std::string& half = step.words[1].text;
    if (half != "up" && half != "down") {
        Refuse(step, "expected: " + std::string(FormOf(step.kind)));
    }
    RECT client;
    GetClientRect(control.window, &client);
    m_operator.ClickAt(control.window, {client.right / 2, client.bottom * (half == "up" ? 1 : 3) / 4});
}

void Player::Pick(const Step& step) {
    HWND picker = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), FindPicker, reinterpret_cast<LPARAM>(&picker));
    if (!picker) {
        Refuse(step, "the contract picker is not open");
    }
    const HWND tree = FindWindowExA(picker, nullptr, kTreeClass, nullptr);
    const HWND list = FindWindowExA(picker, nullptr, kListClass, nullptr);
    HTREEITEM node = nullptr;
    for (std::size_t i = 0; i < step.words.size(); ++i) {
        std::string reason = m_operator.ClickNode(tree, node, step.words[i].text);
        // What is no node of the tree is a contract of the list beside it.
        if (!reason.empty() && i + 1 == step.words.size()) {
            reason = m_operator.ClickCell(list, step.words[i].text);
        }
        if (!reason.empty()) {
            Refuse(step, "the contract picker " + reason);
        }
        m_operator.Rest(m_settings.pause);
    }
}

void Player::Wait(const Step& step) {
    if (step.words[0].text == "idle") {
        m_host.PumpUntilIdle();
    } else if (step.words[0].text != "closed") {
        Refuse(step, "expected: " + std::string(FormOf(step.kind)));
    } else if (!Await([&] { return !IsWindow(m_dialog); })) {
        Refuse(step, "the dialog is still open");
    }
}

void Player::SetFault(const Step& step) {
    FaultPlan& faults = m_host.Services().faults;
    if (step.words.size() == 1 && step.words[0].text == "none") {
        return faults.Clear();
    }
    std::string text;
    for (const Word& word : step.words) {
        text += (text.empty() ? "" : " ") + word.text;
    }
    faults.Set(text);
}

std::string Player::PicturePath(const std::string& name) const {
    return m_settings.out + '/' + name + '-' + std::to_string(m_settings.language) + ".bmp";
}

void Player::Screenshot(const Step& step) {
    if (m_settings.out.empty()) {
        return;
    }
    m_operator.Rest(150);  // the display draws in its own time
    const std::string path = PicturePath(step.words[0].text);
    if (!SavePicture(IsWindow(m_dialog) ? m_dialog : m_parent, path)) {
        Refuse(step, "the picture " + path + " cannot be taken");
    }
}
