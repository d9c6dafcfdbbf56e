#pragma once

#include "app/module_handle.h"
#include "scenario/box_watch.h"
#include "shown_is_sent/plan.h"
#include "shown_is_sent/reader.h"

#include <gtest/gtest.h>

#include <cstdlib>

// The module, loaded by a host of its own, on which plans are played. Boxes are answered as the sequel of the
// running confirm says; one that comes without a confirm is unasked.
//
// EMENDO_SEED is the first plan's (1), EMENDO_PLAN that of the only one, EMENDO_FAILURES how many faults end
// a run (3), EMENDO_LANGUAGE the module's language.
class Stage : public testing::Test {
protected:
    Stage();

    // A number of the environment.
    static int Setting(const char* name, int otherwise) {
        const char* value = std::getenv(name);
        return value ? std::atoi(value) : otherwise;
    }

    virtual Plan Make(unsigned seed) const = 0;
    // The dialog of the plan stands.
    virtual void Opened(const Plan&, Hands&) {}
    // Does a step. Returns what is wrong, empty for nothing.
    virtual std::string Do(const Step& step, Hands& hands) = 0;

    // Plays one plan after the other while more are wanted. Returns their number.
    int PlayPlans(const std::function<bool()>& more);
    // Plays a plan by its place among those. What is wrong is told with the shortest plan that shows it.
    void PlayPlan(int place);

    std::unique_ptr<Reader> ReaderOf(const Plan& plan, const View& view);
    // What boxes and requests are due to; null for nothing.
    void Expect(Sequel* sequel) { m_sequel = m_server.sequel = sequel; }
    // Complains of what came unasked since the last time, and of what a closed dialog has left.
    std::string Complaints(bool closed);

    HMODULE Library() const { return m_module.Library(); }
    HWND Parent() const { return m_host->Get(); }
    WORD Language() const { return m_language; }

    bool explaining = false;  // the plan is known to show a fault

private:
    std::string Play(const Plan& plan);
    std::string Shrink(Plan& plan);
    IEmendixOper* Open(const Plan& plan);
    void Raise();
    void Answer(const OpenBox& box);

    const int m_onlySeed = Setting("EMENDO_PLAN", 0);
    const int m_firstSeed = m_onlySeed ? m_onlySeed : Setting("EMENDO_SEED", 1);
    const WORD m_language = static_cast<WORD>(Setting("EMENDO_LANGUAGE", 1033));
    int m_failures = Setting("EMENDO_FAILURES", 3);
    World m_world;
    ListMaker m_lists;
    Server m_server;
    std::unique_ptr<HostWindow> m_host;
    RawHost m_services;
    FakeConfig m_config;
    ModuleHandle m_module{"EmendoOrd.dll"};
    IEmendix* m_api = nullptr;
    Sequel* m_sequel = nullptr;
    int m_unasked = 0;
    BoxWatch m_boxes{[this](const OpenBox& box) { Answer(box); }, 0};
};
