#pragma once

#include "app/module_handle.h"
#include "shown_is_sent/plan.h"
#include "shown_is_sent/reader.h"

#include <cstdlib>

// The module, loaded by a host of its own, on which plans are played.
class Stage {
public:
    Stage();

    static int Setting(const char* name, int otherwise) {
        const char* value = std::getenv(name);
        return value ? std::atoi(value) : otherwise;
    }

    // Opens the plan's dialog on its record; null when it does not open.
    IEmendixOper* Open(const Plan& plan);
    std::unique_ptr<Reader> ReaderOf(const Plan& plan, const View& view);
    // What the dialog left behind after it was closed; empty for nothing.
    std::string Left() const;

    World world;
    ListMaker lists;
    Server server;
    BoxHook boxes;
    HostWindow host;

private:
    RawHost m_services;
    FakeConfig m_config;
    ModuleHandle m_module;
    IEmendix* m_api = nullptr;
    Texts m_texts;
};

// A shorter plan that still fails, with what it fails with: `play` returns that, empty when all is well.
std::string Shrink(Plan& plan, const std::function<std::string(const Plan&)>& play);
