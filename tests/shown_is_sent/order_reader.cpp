#include "shown_is_sent/chosen_account.h"
#include "shown_is_sent/reader.h"

#include <commctrl.h>

namespace {

enum Mode { kInput, kCarry, kModify, kRemove, kMove, kExercise };

class OrderDialogReader : public Reader {
public:
    OrderDialogReader(const View& shown, int ofMode, const OrderRecord* loaded,
                      const Surroundings& surroundings)
        : Reader(shown, surroundings), mode(ofMode), original(loaded), account(view, world, loaded) {
        for (const int id : {IDC_SOURCE, IDC_ORDER_TYPE, IDC_ORDER_STATE, IDC_VALID_TYPE, IDC_DIRECTION}) {
            Keep(id);
        }
        firstContract = view.Text(IDC_CONTRACT);
        known.commodityType = 'U';
        if (original) {
            known = original->key;
        }
    }

    void Look() override {
        if (IsWindow(view.dialog)) {
            account.Look();
            if (ContractKey shown{}; view.FocusId() != IDC_CONTRACT && Contract(shown)) {
                known = shown;
            }
        }
    }

    bool Foretell(Sequel& out) override {
        if (Corrects() && original && original->backOffice != 'Y' &&
            !Ask(out, Say(IDS_CONFIRM_NOT_INPUT), IDS_CONFIRM_CAPTION, "OK/Cancel")) {
            return false;
        }
        Read();
        std::string errors = Errors();
        if (noDate) {
            return Tell(out, IDS_NO_UNDERLYING_DATE);
        }
        // The server knows the order that is removed or moved.
        if (IsOneOf(static_cast<char>('0' + mode), "34") && original && original->orderNo > 0) {
            errors.clear();
        }
        if (!Passes(out, errors, Warnings()) || !contract) {
            return false;
        }
        FinishOrder();
        return Send(out);
    }

    std::string Contradiction() const override {
        ContractKey shown{};
        if (mode == kExercise || !Contract(shown)) {
            return {};
        }
        shown.sign.Set(account.sign);
        return Misfit(world.GetCommodity(&shown), {1135, 1143, 1150, 1185, 1170, 1194},
                      {1136, 1141, 1148, 1182, 1165, 1189});
    }

private:
    bool Corrects() const { return mode == kModify || mode == kRemove || mode == kMove; }
    bool Second() const { return mode == kCarry || mode == kExercise; }
    bool Spread() const { return IsOneOf(key.commodityType, "mc"); }
    bool Filled() const { return IsOneOf(order.orderState, "56A"); }
    bool Rolling(const std::string& contractNo) const { return Is3MDate(*commodity, contractNo); }
    // What "3M" stands for.
    std::string Dated(const std::string& contractNo) const {
        return contractNo == "3M" ? world.threeMonthDate : contractNo;
    }

    // The contract of the text in sight: the record's own as long as it stands there.
    bool Contract(ContractKey& found) const {
        const std::string text = view.Text(IDC_CONTRACT);
        if (original && text == firstContract && !text.empty()) {
            found = original->key;
            return true;
        }
        return ReadContract(text, found);
    }

    void Read() {
        const OrderRecord nothing{};
        const OrderRecord& own = original ? *original : nothing;
        const bool carry = mode == kCarry;  // it has traded, whatever its lists out of sight show
        order = {};
        order.orderState = carry ? '6' : Code(IDC_ORDER_STATE, "49A56DB", own.orderState);
        order.orderSource = carry ? 'C' : Code(IDC_SOURCE, "EJPMSDR", own.orderSource);
        order.validType = carry ? '0' : Code(IDC_VALID_TYPE, "43012", own.validType);
        order.orderType = carry ? '2' : mode == kExercise ? '5' : Code(IDC_ORDER_TYPE, "2143", own.orderType);
        order.direction = Code(IDC_DIRECTION, "BS", carry ? 0 : own.direction);
        order.accountNo.Set(FirstWord(view.Text(IDC_ACCOUNT)));
        order.upperNo.Set(FirstWord(view.Text(IDC_UPPER)));
        forward = view.Text(IDC_FORWARD_CONTRACT);
        forward = Trimmed(forward.substr(0, forward.find('\1')));
        fillNo = Trimmed(view.Text(IDC_FILL_NO));
        order.orderQty = static_cast<std::uint32_t>(Number(IDC_ORDER_QTY));
        order.fillQty = static_cast<std::uint32_t>(Number(IDC_FILL_QTY));
        if (mode == kInput && order.orderState == '6') {
            order.fillQty = order.orderQty;
        }
        if (mode == kExercise) {  // its price rows are out of sight and stay as they were loaded
            order.orderPrice = own.orderPrice;
            order.triggerPrice = own.triggerPrice;
            order.fillPrice = own.fillPrice;
        } else {
            order.orderPrice = Price(1132, 1136, 1135);
            order.triggerPrice = Price(1139, 1141, 1143);
            order.fillPrice = Price(1145, 1148, 1150);
        }
        price2 = Price(1160, 1182, 1185);
        understood = Contract(key);
        key = understood ? key : known;
        key.sign.Set(account.sign);
        commodity = world.GetCommodity(&key);
        contract = nullptr;
        noDate = false;
    }

    std::string Errors() {
        std::string errors;
        const auto error = [&](bool wrong, unsigned id) { errors += wrong ? Say(id) : ""; };
        error(order.accountNo.Empty(), IDS_ACCOUNT_EMPTY);
        error(order.upperNo.Empty(), IDS_UPPER_EMPTY);
        error(Trimmed(view.Text(IDC_CONTRACT)).empty(),
              mode == kCarry ? IDS_NEAR_CONTRACT_EMPTY : IDS_CONTRACT_EMPTY);
        error(Second() && forward.empty(),
              mode == kExercise ? IDS_UNDERLYING_EMPTY : IDS_FORWARD_CONTRACT_EMPTY);
        error(!order.direction, IDS_DIRECTION_EMPTY);
        error(!commodity, IDS_NO_COMMODITY);
        if (commodity) {
            error(!Second() && !WholeTicks(order.orderPrice, *commodity), IDS_ORDER_PRICE_NOT_TICKS);
            error(!Second() && !WholeTicks(order.triggerPrice, *commodity), IDS_TRIGGER_PRICE_NOT_TICKS);
            contract = understood ? world.GetContract(&key) : nullptr;
            error(!contract, mode == kCarry ? IDS_NO_NEAR_CONTRACT : IDS_NO_CONTRACT);
            error(contract && Rolling(key.contractNo.Str()), IDS_CONTRACT_IS_3M_DATE);
            if (Second()) {
                const ContractKey second = SecondKey();
                contract = world.GetContract(&second);
                error(!contract, mode == kExercise ? IDS_NO_UNDERLYING : IDS_NO_FORWARD_CONTRACT);
                error(contract && Rolling(forward), IDS_CONTRACT_IS_3M_DATE);
            }
        }
        const char state = order.orderState;
        const char type = order.orderType;
        const int qty = static_cast<int>(order.orderQty);
        const int filled = static_cast<int>(order.fillQty);
        error(mode != kExercise && !type, IDS_ORDER_TYPE_EMPTY);
        error(mode != kExercise && !state, IDS_ORDER_STATE_EMPTY);
        error(!Second() && !order.orderSource, IDS_SOURCE_EMPTY);
        error(mode != kExercise && !order.validType, IDS_VALID_TYPE_EMPTY);
        error(!Second() && !Spread() && order.orderPrice == 0 && IsOneOf(type, "24"), IDS_ORDER_PRICE_ZERO);
        error(mode != kCarry && qty <= 0, IDS_ORDER_QTY_ZERO);
        error(!Spread() && order.triggerPrice == 0 && type == '4', IDS_TRIGGER_PRICE_ZERO);
        error(Corrects() && !original, IDS_NO_ORIGINAL_ORDER);
        error(Filled() && fillNo.empty(), IDS_FILL_NO_EMPTY);
        error(Filled() && filled <= 0, IDS_FILL_QTY_NOT_POSITIVE);
        error(mode != kCarry && filled > qty, IDS_FILL_QTY_ABOVE_ORDER);
        error(mode != kCarry &&
                  ((filled != 0 && filled == qty && state != '6') ||
                   (filled > 0 && filled < qty && !IsOneOf(state, "5A")) || (filled <= 0 && Filled())),
              IDS_FILL_QTY_NOT_OF_STATE);
        return errors;
    }

    // Of the forward leg or the underlying.
    ContractKey SecondKey() {
        ContractKey second{};
        second.optionType = second.optionType2 = 'N';
        std::memcpy(&second, &key, sizeof(CommodityKey));
        if (mode == kExercise) {
            second.sign = commodity->sign;
            second.exchangeNo = commodity->relatedExchangeNo;
            second.commodityType = commodity->relatedCommodityType;
            second.commodityNo = commodity->relatedCommodityNo;
            noDate = Dated(forward) == "3M";
        }
        second.contractNo.Set(mode == kExercise ? Dated(forward) : forward);
        return second;
    }

    std::string Warnings() const {
        std::string warnings;
        const auto doubt = [&](double price, unsigned ticks, unsigned zero) {
            warnings += (WholeTicks(price, *commodity) ? "" : Say(ticks)) + (price == 0 ? Say(zero) : "");
        };
        if (commodity && Filled()) {
            doubt(order.fillPrice, IDS_FILL_PRICE_NOT_TICKS, IDS_FILL_PRICE_ZERO);
            if (mode != kMove && Spread()) {
                doubt(price2, IDS_FILL_PRICE2_NOT_TICKS, IDS_FILL_PRICE2_ZERO);
            }
        }
        return warnings;
    }

    void FinishOrder() {
        order.key = key;
        order.contract = const_cast<ContractRecord*>(contract);
        order.flag137 = order.flag138 = 'N';
        order.forcedClose = view.Checked(IDC_FORCE_CLOSE) ? 'Y' : 'N';
        const UserRecord* user = world.GetUser(order.accountNo.Str().c_str(), account.sign.c_str());
        order.updateOperator.Set(user ? user->group->operatorNo.View() : "");
        order.updateTime.Set(kClock);
        if (mode == kInput || mode == kCarry) {
            order.inputOperator = order.updateOperator;
            order.inputTime = order.updateTime;
        } else if (original) {
            order.inputOperator = original->inputOperator;
            order.inputTime = original->inputTime;
        }
        if (order.validType == '2') {
            SYSTEMTIME t{};
            SendMessageA(view.Item(IDC_VALID_DATE), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&t));
            char text[40];
            std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay,
                          t.wHour, t.wMinute, t.wSecond);
            order.validUntil.Set(text);
        }
        order.systemNo.Set(view.Text(IDC_SYSTEM_NO));
        order.exchangeSystemNo.Set(view.Text(IDC_EX_SYSTEM_NO));
        if (original) {
            order.orderNo = original->orderNo;
            order.flag614 = original->flag614;
            order.text279 = original->text279;
        }
    }

    // Whether the dialog closes.
    bool Send(Sequel& out) {
        FillRecord terms{};
        terms.feeGiven = view.Checked(IDC_FEE_GIVEN) ? 'Y' : 'N';
        terms.fee = view.Checked(IDC_FEE_GIVEN) ? std::atof(view.Text(IDC_FEE).c_str()) : 0;
        switch (mode) {
            case kInput:
                return Input(out, fillNo, terms) && !Ask(out, Say(IDS_ASK_NEXT_ORDER), IDS_TIPS, "Yes/No");
            case kCarry:
                return Carry(out, terms);
            case kModify:
                return out.Send("SendOrder", order) || Tell(out, IDS_SEND_MODIFY_FAILED);
            case kRemove:
                return out.Send("DeleteOrder", order.orderNo) || Tell(out, IDS_SEND_REMOVE_FAILED);
            case kMove:
                return order.accountNo.View() == original->accountNo.View()
                           ? !Tell(out, IDS_SAME_ACCOUNT, IDS_MOVE_FAILED_CAPTION)
                           : out.Send("SendOrder", order);
            default:
                return ((order.direction == 'B' ? world.longQty : world.shortQty) >= order.orderQty ||
                        Ask(out, Say(IDS_ASK_FEW_POSITIONS), IDS_TIPS, "Yes/No")) &&
                       (out.Send("SendExercise", order) || Tell(out, IDS_SEND_EXERCISE_FAILED));
        }
    }

    // The order and its fill, which has fee and position as the terms say. False when it failed.
    bool Input(Sequel& out, const std::string& number, FillRecord fill) {
        if (world.GetOrder(order.orderNo)) {
            return !Tell(out, IDS_ORDER_EXISTS, IDS_INPUT_FAILED_CAPTION);
        }
        if (IsOneOf(order.key.commodityType, kTwoLegs) && fill.carryPair) {
            return !Tell(out, IDS_NO_SPREAD_CARRY, IDS_INPUT_FAILED_CAPTION);
        }
        if (!out.Send("SendOrder", order)) {
            return Tell(out, IDS_SEND_INPUT_FAILED);
        }
        if (order.fillQty == 0) {
            return true;
        }
        std::memcpy(&fill.key, &order.key, sizeof fill.key);
        fill.flag111 = 'N';
        fill.direction = order.direction;
        fill.fillSource = order.orderSource;
        fill.fillTime.Set(kClock);
        fill.exchangeFillNo.Set(number);
        fill.accountNo = order.accountNo;
        fill.upperNo = order.upperNo;
        fill.systemNo = order.systemNo;
        fill.fillPrice = order.fillPrice;
        fill.fillQty = order.fillQty;
        fill.currencyNo.Set(FirstWord(view.Text(IDC_CURRENCY)));
        return SendLegs(out, fill, order.key, price2);
    }

    bool Carry(Sequel& out, FillRecord terms) {
        const bool given = terms.feeGiven == 'Y';
        const std::string date = Dated(forward);
        if (date == "3M" && !given) {
            return Tell(out, IDS_NO_FORWARD_DATE);
        }
        const int days = Days(order.key.contractNo.Str(), date);
        if (days <= 0) {
            return Tell(out, days ? IDS_CARRY_CONTRACTS_REVERSED : IDS_SAME_CARRY_CONTRACTS,
                        IDS_CARRY_FAILED_CAPTION);
        }
        const std::string systemNo = view.Text(IDC_SYSTEM_NO);
        terms.carryPair = 1;
        FillRecord nearFill = terms;
        nearFill.feeGiven = 'Y';
        nearFill.fee = 0;
        nearFill.closePrice = Price(1154, 1165, 1170);
        order.orderPrice = order.fillPrice;
        order.orderQty = order.fillQty;
        order.systemNo.Set(systemNo + "_1");
        Input(out, fillNo + "_1", nearFill);
        terms.feeGiven = given || days <= 14 ? 'Y' : 'N';
        terms.closePrice = Price(1172, 1189, 1194);
        order.systemNo.Set(systemNo + "_2");
        order.key.contractNo.Set(forward);
        order.direction = Reversed(order.direction);
        order.orderPrice = order.fillPrice = price2;
        return Input(out, fillNo + "_2", terms);
    }

    const int mode;
    const OrderRecord* original;
    std::string firstContract;
    ChosenAccount account;
    ContractKey known{};  // the contract that was understood last

    // Of one confirm.
    OrderRecord order{};
    ContractKey key{};
    std::string forward, fillNo;
    double price2 = 0;
    bool understood = false;
    bool noDate = false;
    const CommodityRecord* commodity = nullptr;
    const ContractRecord* contract = nullptr;
};

}  // namespace

std::unique_ptr<Reader> OrderReader(const View& view, int mode, const OrderRecord* order,
                                    const Surroundings& surroundings) {
    return std::make_unique<OrderDialogReader>(view, mode, order, surroundings);
}
