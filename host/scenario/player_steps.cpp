// What an operator does, one function a step.

#include "scenario/picture.h"
#include "scenario/player.h"

namespace {

struct ModeName {
    std::string_view dialog;
    std::string_view name;
    int mode;
};
constexpr ModeName kModes[] = {
    {"order", "input", 0}, {"order", "carry", 1},    {"order", "modify", 2}, {"order", "remove", 3},
    {"order", "move", 4},  {"order", "exercise", 5}, {"fill", "full", 0},    {"fill", "input", 1},
    {"fill", "modify", 2}, {"fill", "remove", 3},
};

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
    m_keys = 0;
    m_mouse = false;
    m_kind = dialog == "order" ? DialogKind::kOrder : DialogKind::kFill;
    const int kind = fill ? kRecordKindFill : kRecordKindOrder;
    void* record = fill ? static_cast<void*>(&fill->record) : order ? &order->record : nullptr;
    IEmendixOper* opened =
        m_kind == DialogKind::kOrder
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
    m_mouse = true;
    const Control control = FindUsable(step, step.words[0].text);
    const std::string text = Pattern(step, step.words[1], control.codes);
    if (const std::string reason = m_operator.Choose(control.window, text); !reason.empty()) {
        Refuse(step, "control '" + control.name + "' " + reason);
    }
}

void Player::Type(const Step& step) {
    m_mouse = true;
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
        m_mouse = true;
    }
    ++m_keys;
    m_operator.Key({*key, 0});
}

// As an operator without a mouse does: each goes to whatever has the keyboard.
void Player::Keys(const Step& step) {
    for (const Word& word : step.words) {
        // "Tab*3"
        const std::size_t star = word.quoted ? std::string::npos : word.text.rfind('*');
        const std::string name = word.text.substr(0, star);
        const std::optional<KeyPress> key = word.quoted ? std::nullopt : Operator::KeyPressNamed(name);
        if (!key) {
            m_operator.TypeCharacters(word.text);
            m_keys += static_cast<int>(word.text.size());
            continue;
        }
        const int times = star == std::string::npos ? 1 : std::atoi(word.text.c_str() + star + 1);
        for (int i = 0; i < times; ++i) {
            ++m_keys;  // before it may end the dialog, or ask something
            m_operator.Key(*key);
        }
    }
}

void Player::Click(const Step& step) {
    m_mouse = true;
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
    m_mouse = true;
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
