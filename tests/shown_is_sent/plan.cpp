#include "shown_is_sent/plan.h"

#include <initializer_list>

namespace {

using Random = std::mt19937;

int Below(Random& random, int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}
bool OneIn(Random& random, int times) {
    return Below(random, times) == 0;
}
template <typename Value>
Value Any(Random& random, std::initializer_list<Value> values) {
    return values.begin()[Below(random, static_cast<int>(values.size()))];
}
std::string AnyContract(Random& random, int mode) {
    const auto& texts = World::ContractTexts();
    for (;;) {
        const std::string& text =
            texts[static_cast<std::size_t>(Below(random, static_cast<int>(texts.size())))];
        const bool fits = mode == 1 ? text.starts_with("LMX ") && text.find(" C3") == std::string::npos
                          : mode == 5
                              ? text.find("3000") != std::string::npos && text.find('/') == std::string::npos
                              : true;
        if (fits || OneIn(random, 12)) {
            return text;
        }
    }
}

// Makes the steps of visits to a dialog's fields.
class Visits {
public:
    Visits(std::vector<Step>& steps, Random& random, int mode)
        : m_steps(steps), m_random(random), m_mode(mode), m_theme(AnyContract(random, mode)) {}

    // Whether what is entered next makes an order that can go out.
    bool sound = false;
    void Theme(const std::string& contract) { m_theme = contract; }

    void Choose(int id) { Add(Step::Choose, id, Below(m_random, 3 * 31)); }
    void Type(int id, const std::string& text) { Add(Step::Type, id, !sound && OneIn(m_random, 6), text); }
    void TypeOf(int id, std::initializer_list<const char*> texts) { Type(id, Any(m_random, texts)); }

    void Account() {
        if (OneIn(m_random, 5)) {
            Add(Step::Account, 0, Below(m_random, 8));
        }
        if (sound) {
            TypeOf(1037, {"860001", "10001", "800101", "100010"});
        } else if (OneIn(m_random, 2)) {
            TypeOf(1037,
                   {"860001", "10001", "800101", "100010", "900", "86", "8", "999", "", "7x", "10001 "});
        } else {
            Choose(1037);
        }
    }
    // A field of a number: typed, stepped, or both.
    void Number(int id, int spin, std::initializer_list<const char*> texts) {
        if (sound) {
            return TypeOf(id, {*texts.begin()});
        }
        if (!OneIn(m_random, 8)) {
            TypeOf(id, texts);
        }
        const int up = OneIn(m_random, 2);
        switch (Below(m_random, 6)) {
            case 0:
                return Add(Step::Spin, spin, up);
            case 1:
                return Add(Step::Wheel, id, up);
            case 2:
                return Add(Step::Keys, id, (up ? VK_UP : VK_DOWN) + 256 * (1 + Below(m_random, 2)));
            default:
                return;
        }
    }
    void Quantity(int id, int spin) {
        Number(id, spin, {id == 1125 ? "5" : "3", "5", "1", "12", "0", "", "5x"});
    }
    void Price(int whole, int spin, int numerator) {
        Number(whole, spin, {"100", "97.5", "97", "2010.25", "0", "7", "-3", "12.", "", "1a2"});
        if (OneIn(m_random, 3)) {
            Number(numerator, spin, {"1", "3", "0", "7", "", "12"});
        }
    }
    void OrderContract() {
        const std::string text = sound || OneIn(m_random, 3) ? m_theme : AnyContract(m_random, m_mode);
        switch (sound ? 3 * Below(m_random, 2) : Below(m_random, 5)) {
            case 0:
                return Add(Step::Pick, 0, Below(m_random, 2), text);
            case 1:
                return Add(Step::Pick, 0, Below(m_random, 2048));
            case 2:
                Type(10001, text.substr(0, static_cast<std::size_t>(Below(m_random, 12))));
                if (OneIn(m_random, 2)) {
                    return;
                }
                [[fallthrough]];
            default:
                return Add(Step::Type, 10001, 0, text);
        }
    }
    void FillContract() {
        const std::string text = sound || OneIn(m_random, 3) ? m_theme : AnyContract(m_random, 0);
        const auto second = text.find(' ', text.find(' ') + 1);
        Add(Step::Type, 1056, 0, text.substr(second + 1) + (OneIn(m_random, 8) ? " " : ""));
    }
    // A correction where the caret is, or a key that does not belong there.
    void Noise(int id) {
        if (OneIn(m_random, 3)) {
            return Add(Step::Type, id, 2, Any(m_random, {"x", "1", ".", "-", " ", "C"}));
        }
        const int key = Any(m_random, {VK_BACK, VK_DELETE, VK_HOME, VK_END, VK_LEFT, VK_UP, VK_DOWN});
        Add(Step::Keys, id, key + 256 * (1 + Below(m_random, 3)));
    }
    void Add(Step::Act act, int id, int number, const std::string& text = {}) {
        m_steps.push_back({act, id, number, text});
    }

    // One field of the order dialog, by its place on the way through the dialog.
    void OrderField(int field) {
        switch (field) {
            case 0:
                return Account();
            case 1:
                return Choose(1039);
            case 2:
                return OrderContract();
            case 3:
                return Choose(1052);
            case 4:
                return Choose(1053);
            case 5:
                return Choose(1040);
            case 6:
                return Quantity(1125, 1127);
            case 7:
                return Quantity(1129, 1130);
            case 8:
                return Price(1132, 1133, 1136);
            case 9:
                return Price(1139, 1155, 1141);
            case 10:
                return Price(1145, 1146, 1148);
            case 11:
                return Price(1160, 1161, 1182);
            case 12:
                return OneIn(m_random, 2) || (sound && m_mode == 5)
                           ? Choose(1192)
                           : TypeOf(1192, {"3M", "240329", "240330", "240315", "1509", " 240401 ", ""});
            case 13:
                return Choose(1126);
            case 14:
                return Choose(1114);
            case 15:
                return Choose(1164);
            case 16:
                return Add(Step::Date, 1012, Below(m_random, 300));
            case 17:
                return TypeOf(1153, {"F1", " F2 ", ""});
            case 18:
                return TypeOf(1240, {"X1", "", "X 2"});
            case 19:
                return Add(Step::Click, Any(m_random, {1123, 1186, 1186, 1243, 1244}), 0);
            case 20:
                return Number(1167, 0, {"12.5", "3", "", "1x"});
            case 21:
                return Price(1154, 1162, 1165);
            case 22:
                return Price(1172, 1173, 1189);
            case 23:
                return Add(Step::Position, 0, Below(m_random, 400));
            case 24:
                return Add(Step::Changed, 0, 0);
            case 25:
                return TypeOf(1054, {"S1", "S 2"});
            default:
                return Noise(Any(m_random, {1037, 1039, 10001, 1125, 1129, 1132, 1136, 1145, 1192, 1052}));
        }
    }
    static constexpr int kOrderFields = 27;

    void FillField(int field) {
        switch (field) {
            case 0:
                return sound ? Type(1039, "U1") : Choose(1039);
            case 1:
                return Account();
            case 2:
                return Choose(1158);
            case 3:
                return Quantity(1129, 1130);
            case 4:
                if (sound) {
                    return Type(1122, m_theme.substr(0, m_theme.find(' ')));
                }
                return OneIn(m_random, 3) ? TypeOf(1122, {"exa", "LMX", "ice", "ex", "EXAB"}) : Choose(1122);
            case 5:
                if (sound) {
                    const auto from = m_theme.find(' ') + 1;
                    return Type(1051, m_theme.substr(from, m_theme.find(' ', from) - from));
                }
                return OneIn(m_random, 3) ? TypeOf(1051, {"cm", "cu", "CA", "br", "A", "CMX"}) : Choose(1051);
            case 6:
                return FillContract();
            case 7:
                return Choose(1052);
            case 8:
                return Price(1145, 1146, 1148);
            case 9:
                return Price(1160, 1161, 1182);
            case 10:
                return TypeOf(1058, {"240329", "240401", "240315", " 240330", "240401 ", ""});
            case 11:
                return Choose(1164);
            case 12:
                return Add(Step::Click, 1165, 0);
            case 13:
                return Number(1167, 0, {"12.5", "3", "", "1x"});
            case 14:
                return TypeOf(1039, {"U1", "U10", "U", "zz", ""});
            default:
                return Noise(Any(m_random, {1037, 1039, 1051, 1056, 1129, 1145, 1148, 1122, 1052}));
        }
    }
    static constexpr int kFillFields = 16;

private:
    std::vector<Step>& m_steps;
    Random& m_random;
    int m_mode;
    std::string m_theme;
};

// What has to be entered before a request can go out, by mode.
std::vector<int> NeededFields(bool fillDialog, int mode, int recordKind) {
    if (fillDialog) {
        return recordKind >= 0 ? std::vector{8} : std::vector{0, 1, 2, 3, 4, 5, 6, 7, 8};
    }
    switch (mode) {
        case 0:
            return {0, 1, 2, 3, 4, 6, 5, 7, 8, 9, 10};
        case 1:
            return {0, 1, 2, 12, 7, 10, 11};
        case 2:
            return {6, 8};
        case 4:
            return {0};
        case 5:
            return {0, 1, 2, 12, 3, 6};
        default:
            return {};
    }
}

void Confirm(std::vector<Step>& steps, Random& random) {
    const int answers = Below(random, 3) ? 0xFF : Below(random, 256);
    const int failures = OneIn(random, 6) ? Below(random, 16) : 0;
    steps.push_back({Step::Confirm, 1061, Below(random, 2) + 2 * answers + 512 * failures, {}});
}

}  // namespace

std::string Plan::Words() const {
    std::string words = std::string(fillDialog ? "fill" : "order") + " dialog, mode " + std::to_string(mode) +
                        (recordKind == 0   ? ", on an order"
                         : recordKind == 2 ? ", on a fill"
                                           : "") +
                        ", world " + std::to_string(world) + ", record " + std::to_string(record) + "\n";
    for (const Step& step : steps) {
        words += "  " + step.Words() + "\n";
    }
    return words;
}

Plan MakePlan(unsigned seed) {
    Random random(seed);
    Plan plan;
    plan.fillDialog = OneIn(random, 3);
    plan.world = random() % 16;
    plan.record = random();
    if (plan.fillDialog) {
        plan.mode = Any(random, {0, 0, 0, 1, 1, 2, 3});
        plan.recordKind = plan.mode >= 2 ? Any(random, {2, 2, 2, 0, -1}) : Any(random, {0, 0, -1, -1, 2});
    } else {
        plan.mode = Any(random, {0, 0, 0, 0, 1, 1, 2, 2, 3, 4, 5});
        const bool corrects = plan.mode >= 2 && plan.mode <= 4;
        plan.recordKind = OneIn(random, 12) == corrects ? -1 : 0;
    }
    Visits visits(plan.steps, random, plan.mode);
    if (plan.fillDialog) {
        visits.Theme(AnyContract(random, plan.mode == 0 ? 1 : 0));
    }
    const auto visit = [&](int field) {
        plan.fillDialog ? visits.FillField(field) : visits.OrderField(field);
    };
    const auto any = [&] {
        visit(Below(random, plan.fillDialog ? Visits::kFillFields : Visits::kOrderFields));
    };
    for (const int field : NeededFields(plan.fillDialog, plan.mode, plan.recordKind)) {
        visits.sound = !OneIn(random, 15);
        visit(field);
        visits.sound = false;
        if (OneIn(random, 8)) {
            any();
        }
        if (OneIn(random, 10)) {
            visit(field);
            visits.sound = true;
            visit(field);
            visits.sound = false;
        }
    }
    for (int rounds = 1 + Below(random, 3); rounds > 0; --rounds) {
        Confirm(plan.steps, random);
        for (int more = Below(random, 4); more > 0; --more) {
            any();
        }
    }
    Confirm(plan.steps, random);
    return plan;
}

Step AnyStep(bool fillDialog, std::mt19937& random) {
    std::vector<Step> steps;
    Visits visits(steps, random, Below(random, 6));
    while (steps.empty()) {
        fillDialog ? visits.FillField(Below(random, Visits::kFillFields))
                   : visits.OrderField(Below(random, Visits::kOrderFields));
    }
    return steps[0];
}

void MakeOrder(World& world, std::mt19937& random) {
    OrderRecord& order = world.order = {};
    const UserRecord* user = world.everyUser[static_cast<std::size_t>(Below(random, 8))];
    const ContractRecord* contract = nullptr;
    while (!contract || (contract->key.sign.View() != user->group->sign.View() && !OneIn(random, 20))) {
        contract = world.contracts[random() % world.contracts.size()];
    }
    order.key = contract->key;
    order.key.sign = user->group->sign;
    order.accountNo = user->accountNo;
    order.orderType = Any(random, {'2', '2', '2', '1', '4', '3', '9'});
    order.orderSource = Any(random, {'E', 'P', 'M', 'S', 'C', 'C', 'X'});
    order.validType = Any(random, {'0', '2', '4', '1'});
    order.validUntil.Set(OneIn(random, 2) ? "2030-02-03 04:05:06" : "");
    order.forcedClose = Any(random, {'Y', 'N'});
    order.direction = Any(random, {'B', 'S', 'S', 'B', 'A'});
    order.orderPrice = OneIn(random, 4) ? Below(random, 200) * 0.5 : 10 * Below(random, 20);
    order.triggerPrice = Below(random, 20);
    order.fillPrice = Below(random, 200) * 0.5;
    order.orderQty = static_cast<unsigned>(OneIn(random, 12) ? 0 : 4 + Below(random, 9));
    order.orderState = Any(random, {'4', '4', '5', '6', 'C', '0', 'A'});
    order.fillQty = order.orderState == '6' ? order.orderQty
                    : order.orderState == '4'
                        ? 0
                        : static_cast<unsigned>(OneIn(random, 8) ? 0 : 1 + Below(random, 4));
    order.orderNo = Any(random, {0u, 77u, 77u, 78u});
    order.text279.Set("kept");
    order.systemNo.Set(Any(random, {"S_OLD", "S_OLD", ""}));
    order.exchangeSystemNo.Set("X_OLD");
    order.upperNo.Set(Any(random, {"U1", "U10", "U9"}));
    order.inputOperator.Set("CREATOR");
    order.inputTime.Set("2026-01-02 03:04:05");
    order.backOffice = Any(random, {'Y', 'Y', 'N'});
    order.flag614 = 'Q';
    world.orders.clear();
    if (OneIn(random, 2)) {
        world.orders.push_back(&order);
    }
}

void MakeFill(World& world, std::mt19937& random) {
    do {
        MakeOrder(world, random);
    } while (world.order.key.contractNo2.Str() != "");
    FillRecord& fill = world.fill = {};
    std::memcpy(&fill.key, &world.order.key, sizeof fill.key);
    fill.fillNo.Set("FILL-9");
    fill.accountNo = world.order.accountNo;
    fill.fillSource = world.order.orderSource;
    fill.direction = Any(random, {'B', 'S'});
    fill.exchangeFillNo.Set("M_OLD");
    fill.fillPrice = world.order.fillPrice;
    fill.fillQty = static_cast<unsigned>(Below(random, 5));
    fill.upperNo = world.order.upperNo;
    fill.systemNo.Set("S_FILL");
    fill.order = OneIn(random, 8) ? nullptr : &world.order;
}
