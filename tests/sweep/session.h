#pragma once

#include "app/module_handle.h"
#include "scenario/box_watch.h"
#include "shown_is_sent/hands.h"
#include "sweep/host.h"
#include "sweep/system.h"

#include <memory>

// A dialog, and what is done with it up to its confirm. Questions are agreed to, but for that for a further
// entry.
struct Scenario {
    const char* name;
    Opening opening;
    std::vector<Step> steps;
};
const std::vector<Scenario>& Scenarios();

// What a run shows.
struct Outcome {
    std::string sites[kSites];
    std::vector<FaultyServer::Sent> sent;
    unsigned happened = 0;  // how often the fault did
    unsigned blocks = 0;    // of the module's memory, left at its end; 0 without the guard heap
    int gdiObjects = 0;     // left behind it: the system keeps one for each time that it is loaded
    std::string failure;    // one line for each; empty when all is well
};

// A host over the module, which it loads anew for every run.
class Session {
public:
    explicit Session(std::string module);

    // Loads the module, plays the scenario with the fault (null for none), then another one without, and
    // unloads. Nothing is compared with what is null.
    struct Next {
        const Scenario& scenario;
        const Outcome* ordinary;
    };
    Outcome Play(const Scenario& scenario, const Fault* fault, const Outcome* ordinary, const Next& next);

private:
    void Load();
    unsigned Unload();  // the blocks of the module that are left
    IEmendixOper* Open();
    void PlayOnce(const Scenario& scenario);
    void Enter(IEmendixOper* dialog);
    void CloseAll();
    void Disturb(Kind kind);
    void PostFromAnotherThread();
    void AnswerBox(const OpenBox& box);
    std::vector<HWND> Dialogs() const;
    void Expect(bool holds, const char* what) { m_failure += holds ? "" : std::string("    ") + what + "\n"; }

    std::string m_path;
    FaultyWorld m_world;
    FaultyServer m_server;
    FaultyLists m_lists;
    FaultyConfig m_config;
    FaultyManager m_manager;
    ServerRecord m_tradeServer{};
    OrderRecord m_order{};
    FillRecord m_fill{};
    BoxWatch m_boxes{[this](const OpenBox& box) { AnswerBox(box); }, 0};
    std::unique_ptr<HostWindow> m_parent;
    std::unique_ptr<ModuleHandle> m_module;
    std::unique_ptr<SystemFaults> m_system;
    IEmendix* m_api = nullptr;
    const Scenario* m_scenario = nullptr;
    std::string m_failure;
};
