// What a scenario expects to see.

#include "scenario/player.h"

#include "scenario/request_check.h"
#include "scenario/text_pattern.h"
#include "scenario/window_text.h"

void Player::Expect(const Step& step) {
    const std::vector<Word>& words = step.words;
    const auto second = [&](std::string_view text) { return words.size() > 1 && words[1].text == text; };
    if (words[0].text == "request" && words.size() > 1) {
        return ExpectRequest(step);
    }
    if (words[0].text == "no" && second("request") && words.size() == 2) {
        return ExpectNoRequest(step);
    }
    if ((words[0].text == "order" || words[0].text == "fill") && words.size() > 2) {
        return ExpectRecord(step);
    }
    if (words[0].text == "title" && words.size() == 2) {
        return ExpectTitle(step);
    }
    if (words.size() == 2 && words[0].text == "keys") {
        return ExpectKeys(step);
    }
    if (words.size() < 2) {
        Refuse(step, "expected: " + std::string(FormOf(step.kind)));
    }
    ExpectControl(step);
}

void Player::ExpectRequest(const Step& step) {
    const std::vector<std::string>& lines = m_host.Services().journal.Lines();
    if (!Await([&] { return lines.size() > m_requests; })) {
        Refuse(step, "no request " + step.words[1].text + " was sent");
    }
    if (!m_failure.empty()) {
        return;
    }
    const Json request = Json::parse(lines[m_requests++]);
    if (request["operation"] != step.words[1].text) {
        Refuse(step, "the request is " + request["operation"].get<std::string>() + ", expected " +
                         step.words[1].text);
    }
    const std::string difference = CheckRequest(request, std::span(step.words).subspan(2));
    if (!difference.empty()) {
        Refuse(step, step.words[1].text + ": " + difference);
    }
}

void Player::ExpectNoRequest(const Step& step) {
    const std::vector<std::string>& lines = m_host.Services().journal.Lines();
    if (lines.size() > m_requests) {
        Refuse(step, "a request was sent: " + Json::parse(lines[m_requests]).value("operation", ""));
    }
}

void Player::ExpectRecord(const Step& step) {
    const std::string& number = step.words[1].text;
    const Ledger& ledger = m_host.TheBook().ledger;
    Json fields;
    if (step.words[0].text == "order") {
        const OrderEntry* order =
            ledger.FindOrder(static_cast<std::uint32_t>(std::strtoul(number.c_str(), nullptr, 10)));
        fields = order ? RecordToJson(OrderLayout(), &order->record) : Json();
    } else if (const FillEntry* fill = ledger.FindFill(number)) {
        fields = RecordToJson(FillLayout(), &fill->record);
    }
    const std::string record = step.words[0].text + ' ' + number;
    if (fields.is_null()) {
        Refuse(step, "the book has no " + record);
    }
    const std::string difference = CheckFields(fields, std::span(step.words).subspan(2));
    if (!difference.empty()) {
        Refuse(step, record + ": " + difference);
    }
}

void Player::ExpectTitle(const Step& step) {
    if (!IsWindow(m_dialog)) {
        Refuse(step, "no dialog is open");
    }
    const std::string pattern = Pattern(step, step.words[1], CodeList::kNone);
    if (const std::string title = TextOf(m_dialog); !Matches(title, pattern)) {
        Refuse(step, "the title is \"" + title + "\", expected \"" + ShowPattern(pattern) + '"');
    }
}

void Player::ExpectKeys(const Step& step) {
    if (m_mouse) {
        Refuse(step, "not only keys were used since the dialog was opened");
    }
    if (const std::string& number = step.words[1].text; number != std::to_string(m_keys)) {
        Refuse(step, "keys pressed: " + std::to_string(m_keys) + ", expected " + number);
    }
}

void Player::ExpectControl(const Step& step) {
    const Control control = Find(step, step.words[0].text);
    std::string difference;
    Await([&] {
        difference.clear();
        for (std::size_t next = 1; next < step.words.size() && difference.empty();) {
            difference = CheckState(step, control, next);
        }
        return difference.empty();
    });
    if (!difference.empty()) {
        Refuse(step, "control '" + control.name + "' " + difference);
    }
}

std::string Player::CheckState(const Step& step, const Control& control, std::size_t& next) const {
    const std::string& state = step.words[next++].text;
    const HWND window = control.window;
    const HWND focus = GetFocus();
    const bool shown = (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0;
    const bool enabled = IsWindowEnabled(window) != FALSE;
    const bool checked = SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED;
    const bool focused = focus == window || (focus && GetParent(focus) == window);
    const struct {
        const char* name;
        bool holds;
        const char* otherwise;
    } states[] = {
        {"shown", shown, "hidden"},
        {"hidden", !shown, "shown"},
        {"enabled", enabled, "disabled"},
        {"disabled", !enabled, "enabled"},
        {"checked", checked, "unchecked"},
        {"unchecked", !checked, "checked"},
        {"focused", focused, "without the focus"},
    };
    for (const auto& [name, holds, otherwise] : states) {
        if (state == name) {
            return holds ? "" : std::string("is ") + otherwise + ", expected " + name;
        }
    }
    if (state != "text" || next == step.words.size()) {
        Refuse(step, "expected: " + std::string(FormOf(step.kind)));
    }
    const std::string pattern = Pattern(step, step.words[next++], control.codes);
    const std::string text = TextOf(window);
    // A list that shows a code with its explanation answers with the code alone.
    if (Matches(text, pattern) ||
        (control.codes != CodeList::kNone && Matches(text, pattern.substr(0, pattern.find(' '))))) {
        return {};
    }
    return "shows \"" + text + "\", expected \"" + ShowPattern(pattern) + '"';
}
