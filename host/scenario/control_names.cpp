#include "scenario/control_names.h"

#include <charconv>

namespace {

// 0: the dialog has no such control. The order, carry and exercise dialogs share their ids.
struct ControlRow {
    std::string_view name;
    int orderId;
    int fillId;
    CodeList codes = CodeList::kNone;
};

constexpr ControlRow kControls[] = {
    {"account", 1037, 1037},
    {"upper", 1039, 1039},
    {"source", 1126, 0, CodeList::kSource},
    {"fill-source", 0, 1158, CodeList::kSource},
    {"order-type", 1053, 0, CodeList::kOrderType},
    {"order-state", 1040, 0, CodeList::kOrderState},
    {"valid-type", 1114, 0, CodeList::kValidity},
    {"valid-date", 1012, 0},
    {"exchange", 0, 1122},
    {"commodity", 0, 1051},
    {"contract", 10001, 1056},
    {"contract-pick", 10000, 0},
    {"direction", 1052, 1052, CodeList::kDirection},
    {"forward-direction", 1188, 0, CodeList::kDirection},
    {"forward-contract", 1192, 0},
    {"underlying", 1192, 0},
    {"open-contract", 0, 1058},
    {"open-direction", 0, 1053, CodeList::kDirection},
    {"system-no", 1054, 1054},
    {"exchange-system-no", 1240, 0},
    {"fill-no", 1153, 1153},
    {"order-qty", 1125, 0},
    {"order-qty-spin", 1127, 0},
    {"fill-qty", 1129, 1129},
    {"fill-qty-spin", 1130, 1130},
    {"forward-fill-qty", 1216, 0},
    {"near-position-qty", 1213, 0},
    {"forward-position-qty", 1214, 0},
    {"order-price", 1132, 0},
    {"order-price-spin", 1133, 0},
    {"order-price-numerator", 1136, 0},
    {"order-price-denominator", 1135, 0},
    {"trigger-price", 1139, 0},
    {"trigger-price-spin", 1155, 0},
    {"trigger-price-numerator", 1141, 0},
    {"trigger-price-denominator", 1143, 0},
    {"fill-price", 1145, 1145},
    {"fill-price-spin", 1146, 1146},
    {"fill-price-numerator", 1148, 1148},
    {"fill-price-denominator", 1150, 1150},
    {"fill-price2", 1160, 1160},
    {"fill-price2-spin", 1161, 1161},
    {"fill-price2-numerator", 1182, 1182},
    {"fill-price2-denominator", 1185, 1185},
    {"near-position-price", 1154, 0},
    {"near-position-price-spin", 1162, 0},
    {"near-position-price-numerator", 1165, 0},
    {"near-position-price-denominator", 1170, 0},
    {"forward-position-price", 1172, 0},
    {"forward-position-price-spin", 1173, 0},
    {"forward-position-price-numerator", 1189, 0},
    {"forward-position-price-denominator", 1194, 0},
    {"near-chosen-position", 1243, 0},
    {"forward-chosen-position", 1244, 0},
    {"forced-close", 1123, 0},
    {"currency", 1164, 1164},
    {"fee-given", 1186, 1165},
    {"fee", 1167, 1167},
    {"carry-fee-text", 1015, 0},
    {"confirm", 1061, 1061},
    {"cancel", 1067, 1067},
};

struct CodeRow {
    CodeList list;
    char code;
    unsigned stringId;
};
constexpr CodeRow kCodes[] = {
    {CodeList::kDirection, 'B', 10070},  {CodeList::kDirection, 'S', 10071},
    {CodeList::kOrderState, 'B', 10076}, {CodeList::kOrderState, 'D', 10078},
    {CodeList::kOrderState, '4', 10079}, {CodeList::kOrderState, 'A', 10082},
    {CodeList::kOrderState, '9', 10083}, {CodeList::kOrderState, '5', 10084},
    {CodeList::kOrderState, '6', 10085}, {CodeList::kOrderType, '2', 10093},
    {CodeList::kOrderType, '1', 10094},  {CodeList::kOrderType, '4', 10095},
    {CodeList::kOrderType, '3', 10096},  {CodeList::kOrderType, '5', 10099},
    {CodeList::kValidity, '4', 10109},   {CodeList::kValidity, '3', 10110},
    {CodeList::kValidity, '0', 10111},   {CodeList::kValidity, '1', 10112},
    {CodeList::kValidity, '2', 10113},   {CodeList::kSource, 'P', 10087},
    {CodeList::kSource, 'M', 10088},     {CodeList::kSource, 'C', 10089},
    {CodeList::kSource, 'S', 10090},     {CodeList::kSource, 'D', 10091},
    {CodeList::kSource, 'E', 10117},     {CodeList::kSource, 'J', 10118},
    {CodeList::kSource, 'R', 10119},
};

}  // namespace

std::optional<NamedControl> FindControl(std::string_view name, DialogKind dialog) {
    if (name.starts_with('#')) {
        NamedControl control{0, CodeList::kNone};
        const auto [end, error] = std::from_chars(name.data() + 1, name.data() + name.size(), control.id);
        if (error == std::errc() && end == name.data() + name.size()) {
            return control;
        }
        return std::nullopt;
    }
    for (const ControlRow& row : kControls) {
        const int id = dialog == DialogKind::kOrder ? row.orderId : row.fillId;
        if (row.name == name && id) {
            return NamedControl{id, row.codes};
        }
    }
    return std::nullopt;
}

unsigned StringOfCode(CodeList list, char code) {
    for (const CodeRow& row : kCodes) {
        if (row.list == list && row.code == code) {
            return row.stringId;
        }
    }
    return 0;
}
