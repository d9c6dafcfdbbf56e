#include "shown_is_sent/stage.h"

namespace {

WORD Language() {
    return static_cast<WORD>(Stage::Setting("EMENDO_LANGUAGE", 1033));
}

}  // namespace

Stage::Stage() : m_module("EmendoOrd.dll"), m_texts(m_module.Library(), Language()) {
    m_config.configs.emplace_back().name.Set("Main");
    m_config.count = 1;
    server.api = &world;
    m_services.services["TradeApi"] = &server;
    m_services.services["TradeList"] = static_cast<ITradeList*>(&lists);
    m_services.services["SysConfig"] = static_cast<ISysConfig*>(&m_config);
    m_module.onPluginLoad(Language());
    m_module.onPluginInit(m_services.Manager());
    m_api = m_module.createPluginApi("1.0.0.1");
}

IEmendixOper* Stage::Open(const Plan& plan) {
    world.Reset(plan.world);
    std::mt19937 random(plan.record);
    if (plan.recordKind == 2) {
        MakeFill(world, random);
    } else {
        MakeOrder(world, random);
    }
    if (plan.fillDialog) {
        void* record = plan.recordKind == 2 ? static_cast<void*>(&world.fill) : &world.order;
        return m_api->OpenFillDialog(plan.mode, record, plan.recordKind, host.Get());
    }
    return m_api->OpenOrderDialog(plan.mode, plan.recordKind == 0 ? &world.order : nullptr, host.Get());
}

std::unique_ptr<Reader> Stage::ReaderOf(const Plan& plan, const View& view) {
    const OrderRecord* order = plan.recordKind == 0 ? &world.order : nullptr;
    return plan.fillDialog ? FillReader(view, plan.mode, order, plan.recordKind == 2 ? &world.fill : nullptr,
                                        world, m_texts)
                           : OrderReader(view, plan.mode, order, world, m_texts);
}

std::string Stage::Left() const {
    std::string left;
    left += world.listeners.empty() ? "" : "a listener is left\n";
    left += lists.windows[0].open || lists.windows[1].open ? "a list window is left\n" : "";
    left += GetWindow(host.Get(), GW_ENABLEDPOPUP) != host.Get() && GetWindow(host.Get(), GW_ENABLEDPOPUP)
                ? "a window is left\n"
                : "";
    return left;
}

std::string Shrink(Plan& plan, const std::function<std::string(const Plan&)>& play) {
    std::string failure = play(plan);
    for (std::size_t size = plan.steps.size() / 2; size > 0; size /= 2) {
        for (std::size_t at = 0; at < plan.steps.size();) {
            Plan shorter = plan;
            const auto from = shorter.steps.begin() + static_cast<int>(at);
            shorter.steps.erase(from, from + static_cast<int>(std::min(size, shorter.steps.size() - at)));
            const std::string rest = play(shorter);
            if (rest.empty()) {
                at += size;
            } else {
                plan = shorter;
                failure = rest;
            }
        }
    }
    return failure;
}
