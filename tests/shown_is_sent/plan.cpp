#include "shown_is_sent/plan.h"

#include "res/resource_ids.h"

namespace {

using TextList = std::vector<const char*>;

// How a field is visited: c chosen from its list, t typed, b either, n typed or stepped; a the account,
// o the contract of an order, x exchange, y commodity and z contract of a fill, k clicked, d a date,
// p a position picked from a list, e a position changed by the host, q a wrong key anywhere.
struct Field {
    int id;
    char how;
    int spin = 0;
    TextList texts = {};  // the first is a sound entry
};

const TextList kPrices = {"100", "97.5", "97", "2010.25", "0", "7", "-3", "12.", "", "1a2"};
const TextList kNumerators = {"3", "1", "0", "7", "", "12"};
const TextList kOrderQuantities = {"5", "3", "1", "12", "0", "", "5x"};
const TextList kFillQuantities = {"3", "5", "1", "12", "0", "", "5x"};
const TextList kAccounts = {"860001", "10001", "800101", "100010", "900",   "86",
                            "8",      "999",   "",       "7x",     "10001 "};
const TextList kDates = {"240329", "3M", "240330", "240315", "1509", " 240401 ", "240613", ""};
const TextList kFees = {"12.5", "3", "", "1x"};

// From 13 on: what an entry seldom needs.
const std::vector<Field> kOrderFields = {
    {IDC_ACCOUNT, 'a', 0, kAccounts},
    {IDC_UPPER, 'c'},
    {IDC_CONTRACT, 'o'},
    {IDC_DIRECTION, 'c'},
    {IDC_ORDER_TYPE, 'c'},
    {IDC_ORDER_STATE, 'c'},
    {IDC_ORDER_QTY, 'n', IDC_ORDER_QTY_SPIN, kOrderQuantities},
    {IDC_FILL_QTY, 'n', IDC_FILL_QTY_SPIN, kFillQuantities},
    {IDC_ORDER_PRICE_WHOLE, 'n', IDC_ORDER_PRICE_SPIN, kPrices},
    {IDC_TRIGGER_PRICE_WHOLE, 'n', IDC_TRIGGER_PRICE_SPIN, kPrices},
    {IDC_FILL_PRICE_WHOLE, 'n', IDC_FILL_PRICE_SPIN, kPrices},
    {IDC_FILL_PRICE2_WHOLE, 'n', IDC_FILL_PRICE2_SPIN, kPrices},
    {IDC_FORWARD_CONTRACT, 'b', 0, kDates},
    {IDC_ORDER_PRICE_NUMERATOR, 'n', IDC_ORDER_PRICE_SPIN, kNumerators},
    {IDC_FILL_PRICE_NUMERATOR, 'n', IDC_FILL_PRICE_SPIN, kNumerators},
    {IDC_FILL_PRICE2_NUMERATOR, 'n', IDC_FILL_PRICE2_SPIN, kNumerators},
    {IDC_SOURCE, 'c'},
    {IDC_VALID_TYPE, 'c'},
    {IDC_CURRENCY, 'c'},
    {IDC_VALID_DATE, 'd'},
    {IDC_FILL_NO, 't', 0, {"F1", " F2 ", ""}},
    {IDC_EX_SYSTEM_NO, 't', 0, {"X1", "", "X 2"}},
    {IDC_SYSTEM_NO, 't', 0, {"S1", "S 2"}},
    {IDC_FORCE_CLOSE, 'k'},
    {IDC_FEE_GIVEN, 'k'},
    {IDC_FEE, 'n', 0, kFees},
    {IDC_NEAR_CHOSEN_POSITION, 'k'},
    {IDC_FORWARD_CHOSEN_POSITION, 'k'},
    {IDC_NEAR_POSITION_PRICE_WHOLE, 'n', IDC_NEAR_POSITION_PRICE_SPIN, kPrices},
    {IDC_FORWARD_POSITION_PRICE_WHOLE, 'n', IDC_FORWARD_POSITION_PRICE_SPIN, kPrices},
    {0, 'p'},
    {0, 'e'},
    {0, 'q'},
};
const std::vector<Field> kFillFields = {
    {IDC_UPPER, 'b', 0, {"U1", "U10", "U", "zz", ""}},
    {IDC_ACCOUNT, 'a', 0, kAccounts},
    {IDC_FILL_SOURCE, 'c'},
    {IDC_FILL_QTY, 'n', IDC_FILL_QTY_SPIN, kFillQuantities},
    {IDC_EXCHANGE, 'x', 0, {"exa", "LMX", "ice", "ex", "EXAB"}},
    {IDC_COMMODITY, 'y', 0, {"cm", "cu", "CA", "br", "A", "CMX"}},
    {IDC_FILL_CONTRACT, 'z'},
    {IDC_DIRECTION, 'c'},
    {IDC_FILL_PRICE_WHOLE, 'n', IDC_FILL_PRICE_SPIN, kPrices},
    {IDC_FILL_PRICE_NUMERATOR, 'n', IDC_FILL_PRICE_SPIN, kNumerators},
    {IDC_FILL_PRICE2_WHOLE, 'n', IDC_FILL_PRICE2_SPIN, kPrices},
    {IDC_FILL_PRICE2_NUMERATOR, 'n', IDC_FILL_PRICE2_SPIN, kNumerators},
    {IDC_OPEN_CONTRACT, 't', 0, kDates},
    {IDC_CURRENCY, 'c'},
    {IDC_FILL_FEE_GIVEN, 'k'},
    {IDC_FEE, 'n', 0, kFees},
    {0, 'q'},
};
constexpr std::size_t kQuantity = 6;
// The places of what has to be entered before a request can go out, by mode.
const std::vector<std::size_t> kOrderNeeds[] = {
    {0, 1, 2, 3, 4, 6, 5, 7, 8, 9, 10}, {0, 1, 2, 12, 7, 10, 11}, {6, 8}, {}, {0}, {0, 1, 2, 12, 3, 6}};

class Author {
public:
    Author(Plan& plan, unsigned seed) : m_plan(plan), m_random(seed) {
        plan.fillDialog = OneIn(m_random, 3);
        plan.world = m_random() % 16;
        plan.record = m_random();
        if (plan.fillDialog) {
            plan.mode = Any(m_random, {0, 0, 0, 1, 1, 2, 3});
            plan.recordKind =
                plan.mode >= 2 ? Any(m_random, {2, 2, 2, 0, -1}) : Any(m_random, {0, 0, -1, -1, 2});
        } else {
            plan.mode = Any(m_random, {0, 0, 0, 0, 1, 1, 2, 2, 3, 4, 5});
            const bool corrects = plan.mode >= 2 && plan.mode <= 4;
            plan.recordKind = OneIn(m_random, 12) == corrects ? -1 : 0;
        }
        m_theme = Contract(plan.fillDialog && plan.mode == 0 ? 1 : plan.fillDialog ? 0 : plan.mode);
    }

    void WriteEntry() {
        const std::vector<std::size_t> fill = m_plan.recordKind >= 0
                                                  ? std::vector<std::size_t>{8}
                                                  : std::vector<std::size_t>{0, 1, 2, 3, 4, 5, 6, 7, 8};
        const std::vector<std::size_t>& needs = m_plan.fillDialog ? fill : kOrderNeeds[m_plan.mode];
        for (const std::size_t place : needs) {
            Visit(Fields()[place], !OneIn(m_random, 15));
            if (OneIn(m_random, 8)) {
                VisitAny();
            }
            if (OneIn(m_random, 10)) {  // and chosen again
                Visit(Fields()[place], false);
                Visit(Fields()[place], true);
            }
        }
        // Corrected and confirmed again; after an input the next order begins without a quantity.
        for (int rounds = 2 + Below(m_random, 7); rounds > 0; --rounds) {
            Confirm();
            for (int more = Below(m_random, 4); more > 0; --more) {
                VisitAny();
            }
            for (int more = OneIn(m_random, 3) ? 0 : 2; more > 0 && !needs.empty(); --more) {
                Visit(Fields()[needs[m_random() % needs.size()]], true);
            }
            if (!m_plan.fillDialog && m_plan.mode == 0) {
                Visit(Fields()[kQuantity], true);
            }
        }
        Confirm();
    }
    void WriteMuddle(std::size_t steps) {
        while (m_plan.steps.size() < steps) {
            switch (Below(m_random, 12)) {
                case 0:
                    Confirm();
                    break;
                case 1:
                    Add(Step::Press, 0,
                        Any(m_random, {VK_TAB, VK_RETURN, VK_ESCAPE, VK_F4, VK_SPACE, VK_DOWN, VK_NEXT,
                                       VK_DELETE, VK_BACK, 0x41, 0x35}));
                    break;
                case 2:
                    Add(Step::Point, Below(m_random, 500), Below(m_random, 500));
                    break;
                case 3:
                    Add(Any(m_random, {Step::Vanish, Step::Vanish, Step::Burst}), 0, Below(m_random, 1000));
                    break;
                default:
                    VisitAny();
            }
        }
        if (OneIn(m_random, 4)) {
            m_plan.steps.insert(m_plan.steps.begin() + Below(m_random, static_cast<int>(steps)),
                                {Step::Lose});
        }
    }

private:
    const std::vector<Field>& Fields() const { return m_plan.fillDialog ? kFillFields : kOrderFields; }
    void VisitAny() { Visit(Fields()[m_random() % Fields().size()], false); }
    void Add(Step::Act act, int id, int number = 0, const std::string& text = {}) {
        m_plan.steps.push_back({act, id, number, text});
    }

    std::string Contract(int mode) {
        for (;;) {
            const std::string text = World::kContracts[m_random() % std::size(World::kContracts)];
            const bool option = text.find("3000") != std::string::npos;
            const bool fits = mode == 1 ? text.starts_with("LMX ") && !option : mode != 5 || option;
            if (fits || OneIn(m_random, 12)) {
                return text;
            }
        }
    }
    void Choose(int id) { Add(Step::Choose, id, Below(m_random, 3 * 31)); }
    void Type(int id, const std::string& text, bool sound) {
        Add(Step::Type, id, !sound && OneIn(m_random, 6), text);
    }

    void Visit(const Field& field, bool sound) {
        const int many = static_cast<int>(field.texts.size());
        const std::string text =
            many ? field.texts[static_cast<std::size_t>(sound ? 0 : Below(m_random, many))] : "";
        const std::string contract = sound || OneIn(m_random, 3) ? m_theme : Contract(m_plan.mode);
        const auto blank = contract.find(' ');
        const auto second = contract.find(' ', blank + 1);
        switch (field.how) {
            case 'a':
                if (OneIn(m_random, 5)) {
                    Add(Step::Account, 0, Below(m_random, 8));
                }
                if (sound) {
                    return Type(field.id, field.texts[m_random() % 4], true);
                }
                [[fallthrough]];
            case 'b':
                return OneIn(m_random, 2) ? Choose(field.id) : Type(field.id, text, sound);
            case 'c':
                return Choose(field.id);
            case 't':
                return Type(field.id, text, sound);
            case 'n':
                if (sound || !OneIn(m_random, 4)) {
                    Type(field.id, text, sound);
                }
                return sound ? void() : Turn(field);
            case 'o':
                return PickOrType(field.id, contract, sound ? 3 * Below(m_random, 2) : Below(m_random, 5));
            case 'x':
                return sound ? Type(field.id, contract.substr(0, blank), true) : VisitCode(field.id, text);
            case 'y':
                return sound ? Type(field.id, contract.substr(blank + 1, second - blank - 1), true)
                             : VisitCode(field.id, text);
            case 'z':
                return Type(field.id, contract.substr(second + 1) + (OneIn(m_random, 8) ? " " : ""), sound);
            case 'k':
                return Add(Step::Click, field.id);
            case 'd':
                return Add(Step::Date, field.id, Below(m_random, 300));
            case 'p':
                return Add(Step::Position, 0, Below(m_random, 400));
            case 'e':
                return Add(Step::Changed, 0);
            default:
                return Slip(Fields()[m_random() % Fields().size()].id);
        }
    }
    void VisitCode(int id, const std::string& text) {
        return OneIn(m_random, 3) ? Type(id, text, false) : Choose(id);
    }
    void PickOrType(int id, const std::string& contract, int how) {
        if (how == 0) {
            return Add(Step::Pick, 0, Below(m_random, 2), contract);
        }
        if (how == 1) {
            return Add(Step::Pick, 0, Below(m_random, 2048));
        }
        if (how == 2) {  // broken off
            Type(id, contract.substr(0, m_random() % 12), false);
        }
        if (how != 2 || OneIn(m_random, 2)) {
            Add(Step::Type, id, 0, contract);
        }
    }
    void Turn(const Field& field) {
        const int up = Below(m_random, 2);
        const int turn = Below(m_random, 6);
        if (turn == 0 && field.spin) {
            Add(Step::Spin, field.spin, up);
        } else if (turn == 1) {
            Add(Step::Wheel, field.id, up);
        } else if (turn == 2) {
            Add(Step::Keys, field.id, (up ? VK_UP : VK_DOWN) + 256 * (1 + Below(m_random, 2)));
        }
    }
    // A key that does not belong there, or a correction where the caret is.
    void Slip(int id) {
        if (OneIn(m_random, 3)) {
            return Add(Step::Type, id, 2, Any(m_random, {"x", "1", ".", "-", " ", "C"}));
        }
        const int key = Any(m_random, {VK_BACK, VK_DELETE, VK_HOME, VK_END, VK_LEFT, VK_UP, VK_DOWN});
        Add(Step::Keys, id, key + 256 * (1 + Below(m_random, 3)));
    }
    void Confirm() {
        const int answers = Below(m_random, 3) ? 0xFF : Below(m_random, 256);
        const int failures = OneIn(m_random, 6) ? Below(m_random, 16) : 0;
        Add(Step::Confirm, IDC_CONFIRM, Below(m_random, 2) + 2 * answers + 512 * failures);
    }

    Plan& m_plan;
    std::mt19937 m_random;
    std::string m_theme;  // the contract that the entry is about
};

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

Plan MakeEntry(unsigned seed) {
    Plan plan;
    Author(plan, seed).WriteEntry();
    return plan;
}

Plan MakeMuddle(unsigned seed, int steps) {
    Plan plan;
    Author(plan, seed).WriteMuddle(static_cast<std::size_t>(steps));
    return plan;
}
