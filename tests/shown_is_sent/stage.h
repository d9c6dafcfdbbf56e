#pragma once

#include "app/module_handle.h"
#include "scenario/box_watch.h"
#include "shown_is_sent/plan.h"
#include "shown_is_sent/reader.h"

#include <cstdlib>

// The module, loaded by a host of its own, on which plans are played. Boxes are answered as the sequel of the
// running confirm says; one that comes without a confirm is unasked.
class Stage {
public:
    Stage();

    // A number of the environment.
    static int Setting(const char* name, int otherwise) {
        const char* value = std::getenv(name);
        return value ? std::atoi(value) : otherwise;
    }

    // The host's window stands from now on.
    void Raise();
    // Opens the plan's dialog on its record, in a host window that stands; null when it does not open. Should
    // the process end or stand still for a minute, the plan is told.
    IEmendixOper* Open(const Plan& plan);
    std::unique_ptr<Reader> ReaderOf(const Plan& plan, const View& view);
    // What boxes and requests are due to; null for nothing.
    void Expect(Sequel* sequel) { m_sequel = server.sequel = sequel; }
    // Complains of what came unasked since the last time, and of what a closed dialog has left.
    std::string Complaints(bool closed);

    World world;
    ListMaker lists;
    Server server;
    std::unique_ptr<HostWindow> host;

private:
    void Answer(const OpenBox& box);

    RawHost m_services;
    FakeConfig m_config;
    ModuleHandle m_module{"EmendoOrd.dll"};
    IEmendix* m_api = nullptr;
    Sequel* m_sequel = nullptr;
    int m_unasked = 0;
    BoxWatch m_boxes{[this](const OpenBox& box) { Answer(box); }, 0};
};
