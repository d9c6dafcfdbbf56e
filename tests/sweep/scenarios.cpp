#include "res/resource_ids.h"
#include "sweep/session.h"

namespace {

// Picks a line of a list from the open list.
Step Line(int id, int line) {
    return {Step::Choose, id, 3 * line + 2};
}
Step Text(int id, const char* text) {
    return {Step::Type, id, 0, text};
}
const Step kConfirm{Step::Confirm, IDC_CONFIRM};
const Step kChanged{Step::Changed};

}  // namespace

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = {
        {"input",
         {false, 0, -1},
         {Text(IDC_ACCOUNT, "800101"),
          Line(IDC_UPPER, 2),
          {Step::Pick, 0, 3},
          Text(IDC_CONTRACT, "EXA CM 1509"),
          Line(IDC_DIRECTION, 0),
          Text(IDC_ORDER_QTY, "5"),
          Text(IDC_ORDER_PRICE_WHOLE, "97.5"),
          Line(IDC_ORDER_STATE, 3),
          Text(IDC_FILL_QTY, "3"),
          kChanged,
          kConfirm}},
        {"carry",
         {false, 1, -1},
         {Text(IDC_ACCOUNT, "800101"),
          Line(IDC_UPPER, 2),
          Text(IDC_CONTRACT, "LMX CA 240315"),
          Text(IDC_FORWARD_CONTRACT, "240329"),
          Text(IDC_FILL_QTY, "3"),
          Text(IDC_FILL_PRICE_WHOLE, "100"),
          Text(IDC_FILL_PRICE2_WHOLE, "101"),
          {Step::Position, 0, 200},
          {Step::Position, 0, 201},
          kChanged,
          kConfirm}},
        {"modification",
         {false, 2, kRecordKindOrder},
         {Text(IDC_ORDER_QTY, "6"), Text(IDC_ORDER_PRICE_WHOLE, "98"), kConfirm}},
        {"removal of an order's fills", {false, 3, kRecordKindOrder}, {kConfirm}},
        {"move", {false, 4, kRecordKindOrder}, {Text(IDC_ACCOUNT, "800101"), kConfirm}},
        {"exercise",
         {false, 5, -1},
         {Text(IDC_ACCOUNT, "800101"), Line(IDC_UPPER, 2), Text(IDC_CONTRACT, "EXA CMO 1509 C3000"),
          Line(IDC_FORWARD_CONTRACT, 0), Line(IDC_DIRECTION, 0), Text(IDC_ORDER_QTY, "5"), kConfirm}},
        {"fill",
         {true, 1, -1},
         {Line(IDC_UPPER, 2), Text(IDC_ACCOUNT, "800101"), Line(IDC_FILL_SOURCE, 0), Text(IDC_FILL_QTY, "3"),
          Text(IDC_EXCHANGE, "EXA"), Text(IDC_COMMODITY, "CM"), Text(IDC_FILL_CONTRACT, "1509"),
          Line(IDC_DIRECTION, 0), Text(IDC_FILL_PRICE_WHOLE, "97.5"), kConfirm}},
        {"carry fill",
         {true, 0, -1},
         {Line(IDC_UPPER, 2), Text(IDC_ACCOUNT, "800101"), Line(IDC_FILL_SOURCE, 0), Text(IDC_FILL_QTY, "3"),
          Text(IDC_FILL_CONTRACT, "240315"), Line(IDC_DIRECTION, 0), Text(IDC_FILL_PRICE_WHOLE, "100"),
          Text(IDC_OPEN_CONTRACT, "240329"), Text(IDC_FILL_PRICE2_WHOLE, "101"), kConfirm}},
        {"fill of an order",
         {true, 0, kRecordKindOrder},
         {Text(IDC_FILL_QTY, "3"), Text(IDC_FILL_PRICE_WHOLE, "97.5"), kConfirm}},
        {"modification of a fill",
         {true, 2, kRecordKindFill},
         {Text(IDC_FILL_QTY, "3"), Text(IDC_FILL_PRICE_WHOLE, "97.5"), kConfirm}},
        {"removal of a fill", {true, 3, kRecordKindFill}, {kConfirm}},
    };
    return scenarios;
}
