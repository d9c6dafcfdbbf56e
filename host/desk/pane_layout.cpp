#include "desk/pane_layout.h"

#include "book/host_text.h"
#include "book/record_json.h"

#include <algorithm>

namespace {

constexpr double kLeast = 0.1;  // share of a pane's smallest extent
constexpr char kFormat[] = "emendo-desk-1";
constexpr int kWidestColumn = 4000;

int Part(double share, int whole) {
    return static_cast<int>(share * whole + 0.5);
}

void ReadLists(const Json& lists, DeskSettings& settings) {
    for (std::size_t i = 0; i < settings.lists.size() && i < lists.size(); ++i) {
        DeskSettings::List& list = settings.lists[i];
        for (const Json& width : lists.at(i).at("widths")) {
            list.widths.push_back(std::clamp(width.get<int>(), 0, kWidestColumn));
        }
        list.sortColumn = lists.at(i).at("sortColumn").get<int>();
        list.descending = lists.at(i).at("descending").get<bool>();
    }
}

DeskSettings FromJson(const Json& json) {
    DeskSettings settings;
    PaneLayout& panes = settings.panes;
    panes.at = json.at("dividers").get<decltype(panes.at)>();
    for (int i = 0; i < kDividerCount; ++i) {
        panes.Move(i, panes.at[static_cast<std::size_t>(i)]);
    }
    if (json.contains("window")) {
        const Json& window = json.at("window");
        settings.window = {window.at(0).get<int>(), window.at(1).get<int>(), window.at(2).get<int>(),
                           window.at(3).get<int>()};
        settings.maximized = json.at("maximized").get<bool>();
        settings.dpi = std::max(1, json.value("dpi", kPlainDpi));
        settings.placed = true;
    }
    ReadLists(json.at("lists"), settings);
    return settings;
}

}  // namespace

PaneBox AtDpi(const PaneBox& box, int from, int to) {
    const auto scaled = [&](int extent) { return Part(static_cast<double>(to) / from, extent); };
    return {box.left, box.top, box.left + scaled(box.right - box.left),
            box.top + scaled(box.bottom - box.top)};
}

void PaneLayout::Move(int divider, double share) {
    const double low = divider == kBelowFills ? at[kBelowOrders] + kLeast : kLeast;
    const double high = divider == kBelowOrders ? at[kBelowFills] - kLeast : 1 - kLeast;
    at[static_cast<std::size_t>(divider)] = std::max(low, std::min(share, high));
}

std::array<PaneBox, 5> PaneLayout::Panes(int width, int height, int gap) const {
    const auto [orders, fills, besideFills, besideAccounts] = Dividers(width, height, gap);
    return {{{0, 0, width, orders.top},
             {0, orders.bottom, besideFills.left, fills.top},
             {besideFills.right, orders.bottom, width, fills.top},
             {0, fills.bottom, besideAccounts.left, height},
             {besideAccounts.right, fills.bottom, width, height}}};
}

std::array<PaneBox, kDividerCount> PaneLayout::Dividers(int width, int height, int gap) const {
    const int below = Part(at[kBelowOrders], height);
    const int lower = Part(at[kBelowFills], height);
    const int fills = Part(at[kBesideFills], width);
    const int accounts = Part(at[kBesideAccounts], width);
    return {{{0, below, width, below + gap},
             {0, lower, width, lower + gap},
             {fills, below + gap, fills + gap, lower},
             {accounts, lower + gap, accounts + gap, height}}};
}

DeskSettings ReadDeskSettings(const std::string& path) {
    try {
        const Json json = Json::parse(ReadWholeFile(path).value_or(""));
        if (json.at("format") == kFormat) {
            return FromJson(json);
        }
    } catch (const std::exception&) {
        // not there, of another version, or damaged
    }
    return {};
}

bool WriteDeskSettings(const DeskSettings& settings, const std::string& path) {
    Json json;
    json["format"] = kFormat;
    json["dividers"] = settings.panes.at;
    if (settings.placed) {
        const PaneBox& window = settings.window;
        json["window"] = {window.left, window.top, window.right, window.bottom};
        json["maximized"] = settings.maximized;
        json["dpi"] = settings.dpi;
    }
    Json& lists = json["lists"] = Json::array();
    for (const DeskSettings::List& list : settings.lists) {
        lists.push_back(
            {{"widths", list.widths}, {"sortColumn", list.sortColumn}, {"descending", list.descending}});
    }
    return WriteWholeFile(path, JsonText(json, 1) + '\n').empty();
}
