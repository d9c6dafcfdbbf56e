#pragma once

#include "scenario/box_watch.h"
#include "scenario/control_names.h"
#include "scenario/operator.h"
#include "scenario/script.h"

#include <functional>
#include <span>

struct PlayerSettings {
    WORD language;
    std::string out;                          // folder for pictures; empty: none are taken
    std::string name;                         // of the scenario, for the picture of a failure
    unsigned pause;                           // milliseconds between steps, for people who watch
    std::function<void(const Step&)> onStep;  // before each step
};

// Plays a scenario in a terminal whose module is loaded. Steps run one after the other; while a question is
// open, the steps that deal with it run inside the question's own message loop.
class Player {
public:
    Player(const Script& script, HostApp& host, PlayerSettings settings);
    ~Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    // Empty when the scenario went as it says; otherwise file, line and reason. A picture of the screen then
    // shows the moment.
    std::string Play();

private:
    void PlayAll();
    void Begin(const Step& step);
    void Run(const Step& step);
    void OnBox(const OpenBox& box);
    void Fail(const std::string& what);
    [[noreturn]] void Refuse(const Step& step, const std::string& reason) const;
    // Serves messages until the condition holds or its time is over.
    bool Await(const std::function<bool()>& condition);

    void Open(const Step& step);
    void Choose(const Step& step);
    void Type(const Step& step);
    void Press(const Step& step);
    void Keys(const Step& step);
    void Click(const Step& step);
    void Pick(const Step& step);
    void Wait(const Step& step);
    void AwaitAnswer(const Step& step);
    void Answer(const Step& step, const OpenBox& box);
    void SetFault(const Step& step);
    void Screenshot(const Step& step);

    void Expect(const Step& step);
    void ExpectRequest(const Step& step);
    void ExpectNoRequest(const Step& step);
    void ExpectRecord(const Step& step);
    void ExpectTitle(const Step& step);
    void ExpectKeys(const Step& step);
    void ExpectControl(const Step& step);

    struct Control {
        HWND window;
        CodeList codes;
        std::string name;
    };
    Control Find(const Step& step, const std::string& name) const;
    // One that an operator can use now.
    Control FindUsable(const Step& step, const std::string& name) const;
    // What differs from one word of "expect CONTROL"; `next` is the word behind it and moved over what is
    // used.
    std::string CheckState(const Step& step, const Control& control, std::size_t& next) const;
    // The text that a word means, with kAnything where it leaves something open.
    std::string Pattern(const Step& step, const Word& word, CodeList codes) const;
    HWND Parent();
    std::string PicturePath(const std::string& name) const;

    const Script& m_script;
    HostApp& m_host;
    PlayerSettings m_settings;
    Operator m_operator;
    BoxWatch m_boxes;
    HWND m_parent = nullptr;
    HWND m_dialog = nullptr;  // the one opened last
    DialogKind m_kind = DialogKind::kOrder;
    std::size_t m_next = 0;  // the step that comes next
    const Step* m_current = nullptr;
    int m_keys = 0;              // pressed since the dialog was opened
    bool m_mouse = false;        // something else was used
    std::size_t m_requests = 0;  // requests that were expected so far
    std::string m_failure;
};
