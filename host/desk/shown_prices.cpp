#include "desk/shown_prices.h"

#include "trade/fill_record.h"

#include <cstring>

namespace {

constexpr int kFillNo = 1153;
constexpr int kFillSource = 1158;  // only the fill dialog has it

struct PriceControls {
    const char* name;
    int whole, numerator, denominator;
    bool ofPosition;
};
constexpr PriceControls kPrices[] = {
    {"order price", 1132, 1136, 1135, false},        {"trigger price", 1139, 1141, 1143, false},
    {"fill price", 1145, 1148, 1150, false},         {"fill price 2", 1160, 1182, 1185, false},
    {"near position price", 1154, 1165, 1170, true}, {"forward position price", 1172, 1189, 1194, true},
};

std::string TextOfItem(HWND dialog, int id) {
    char text[300] = "";
    GetDlgItemTextA(dialog, id, text, sizeof text);
    return text;
}

bool CanBeEntered(HWND dialog, int id) {
    HWND control = GetDlgItem(dialog, id);
    return control && IsWindowEnabled(control) && (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE);
}

// A fill of the fill dialog carries the number that the dialog shows, with the leg behind it.
bool Sends(HWND dialog, const JournalEntry& entry) {
    const bool fillDialog = GetDlgItem(dialog, kFillSource) != nullptr;
    if (entry.layout != &FillLayout()) {
        return !fillDialog;
    }
    FillRecord fill;
    std::memcpy(&fill, entry.record, sizeof fill);
    const std::string number = TextOfItem(dialog, kFillNo);
    return fillDialog && !number.empty() && fill.exchangeFillNo.View().starts_with(number);
}

}  // namespace

std::vector<ShownPrice> PricesShownFor(const JournalEntry& entry, const std::vector<HWND>& dialogs) {
    std::vector<ShownPrice> shown;
    for (HWND dialog : dialogs) {
        if (!entry.record || !Sends(dialog, entry)) {
            continue;
        }
        for (const PriceControls& price : kPrices) {
            if (CanBeEntered(dialog, price.whole)) {
                const bool fractions = CanBeEntered(dialog, price.numerator);
                shown.push_back({price.name, TextOfItem(dialog, price.whole),
                                 fractions ? TextOfItem(dialog, price.numerator) : "",
                                 TextOfItem(dialog, price.denominator), price.ofPosition});
            }
        }
    }
    return shown;
}
