#include "shown_is_sent/reading.h"

#include <commctrl.h>

namespace {

enum : int { kInput, kCarry, kModify, kRemove, kMove, kExercise };
enum : int {
    kAccount = 1037,
    kUpper = 1039,
    kSource = 1126,
    kType = 1053,
    kState = 1040,
    kValid = 1114,
    kDate = 1012,
    kDirection = 1052,
    kForward = 1192,
    kCurrency = 1164,
    kContract = 10001,
    kSystemNo = 1054,
    kExSystemNo = 1240,
    kFillNo = 1153,
    kOrderQty = 1125,
    kFillQty = 1129,
    kForceClose = 1123,
    kFeeGiven = 1186,
    kFee = 1167,
};
constexpr int kNumerators[] = {1136, 1141, 1148, 1182, 1165, 1189};
constexpr int kDenominators[] = {1135, 1143, 1150, 1185, 1170, 1194};

class OrderDialogReader : public BothReaders {
public:
    OrderDialogReader(const View& shown, int ofMode, const OrderRecord* ofOrder, World& host,
                      const Texts& strings)
        : BothReaders(shown, host, strings), mode(ofMode), original(ofOrder) {
        for (const int id : {kSource, kType, kState, kValid, kDirection}) {
            Keep(id);
        }
        firstContract = view.Text(kContract);
        if (original) {
            known = original->key;
            account = original->accountNo.Str();
            sign = original->key.sign.Str();
        } else if (const auto rows = Rows(); !rows.empty()) {
            sign = rows[0]->group->sign.Str();
        }
        known.commodityType = original ? known.commodityType : 'U';
        LookAtAccount(true);
    }

    void Look() override {
        if (!IsWindow(view.dialog)) {
            return;
        }
        LookAtAccount(false);
        ContractKey key{};
        if (!Focused(kContract) && Contract(key)) {
            known = key;
        }
    }

    bool Foretell(Sequel& out) override {
        if (Corrects() && original && original->backOffice != 'Y' &&
            !out.Box(texts(10047), texts(10046), "OK/Cancel")) {
            return false;
        }
        Read();
        std::string errors = Errors();
        if (noDate) {
            return Tell(out, 10025, 10114);
        }
        if ((mode == kRemove || mode == kMove) && original && original->orderNo > 0) {
            errors.clear();
        }
        if (!errors.empty()) {
            out.Box(errors, texts(10040), "OK");
            return false;
        }
        const std::string warnings = Warnings();
        if (!warnings.empty() && !out.Box(warnings + texts(10045), texts(10046), "OK/Cancel")) {
            return false;
        }
        if (!contract) {
            return false;
        }
        BuildOrder();
        return Send(out);
    }

    std::string Contradiction() const override {
        ContractKey key{};
        if (mode == kExercise || !Contract(key)) {
            return {};
        }
        SetCommodity(key, sign, key.exchangeNo.Str(), key.commodityType, key.commodityNo.Str());
        const CommodityRecord* commodity_ = world.GetCommodity(&key);
        for (int row = 0; commodity_ && row < 6; ++row) {
            if (Number(kDenominators[row]) != static_cast<int>(commodity_->tickDenominator)) {
                return "denominator #" + std::to_string(kDenominators[row]) + " is not the commodity's";
            }
            if (commodity_->tickDenominator < 2 && Number(kNumerators[row]) != 0) {
                return "numerator #" + std::to_string(kNumerators[row]) + " without fractions";
            }
        }
        return {};
    }

private:
    bool Corrects() const { return mode == kModify || mode == kRemove || mode == kMove; }
    bool Second() const { return mode == kCarry || mode == kExercise; }
    bool Focused(int id) const {
        return GetFocus() && (GetFocus() == view.Item(id) || GetParent(GetFocus()) == view.Item(id));
    }

    // The accounts as the list shows them.
    std::vector<const UserRecord*> Rows() const {
        std::vector<const UserRecord*> rows;
        for (const UserRecord* user : world.users) {
            if (user->group->tradable == 'Y') {
                rows.push_back(user);
            }
        }
        std::stable_sort(rows.begin(), rows.end(), [](const UserRecord* a, const UserRecord* b) {
            return a->accountNo.View() < b->accountNo.View();
        });
        return rows;
    }
    // The account that was chosen or typed last, a row of the list: the number alone is not enough.
    void LookAtAccount(bool opening) {
        const std::pair<int, std::string> shown = {view.Line(kAccount), view.Text(kAccount)};
        if (opening || shown == lastShown || (shown.first < 0 && Focused(kAccount))) {
            lastShown = opening ? shown : lastShown;
            return;
        }
        lastShown = shown;
        const std::string number = FirstWord(shown.second);
        const std::string line = shown.first < 0 ? "" : view.LineText(kAccount, shown.first);
        const UserRecord* found = nullptr;
        for (const UserRecord* each : world.everyUser) {
            if (FirstWord(line) == number && line == number + ' ' + each->accountName.Str() &&
                each->accountNo == number) {
                found = each;
            }
        }
        if (!found && number != account) {
            for (const UserRecord* row : Rows()) {
                found = !found && row->accountNo == number ? row : found;
            }
        }
        if (found) {
            account = number;
            sign = found->group->sign.Str();
        }
    }

    // The contract of the text in sight: the record's own as long as it stands there.
    bool Contract(ContractKey& key) const {
        const std::string text = view.Text(kContract);
        if (original && text == firstContract && !text.empty()) {
            key = original->key;
            return true;
        }
        return ReadContract(text, key);
    }

    void Read() {
        order = {};
        contract = nullptr;
        noDate = false;
        order.orderState =
            mode == kCarry ? '6' : Code(kState, "49A56DB", original ? original->orderState : 0);
        order.orderSource =
            mode == kCarry ? 'C' : Code(kSource, "EJPMSDR", original ? original->orderSource : 0);
        order.validType = mode == kCarry ? '0' : Code(kValid, "43012", original ? original->validType : 0);
        order.orderType = mode == kCarry      ? '2'
                          : mode == kExercise ? '5'
                                              : Code(kType, "2143", original ? original->orderType : 0);
        order.direction = Code(kDirection, "BS", original && mode != kCarry ? original->direction : 0);
        order.accountNo.Set(Trimmed(FirstWord(view.Text(kAccount))));
        order.upperNo.Set(Trimmed(FirstWord(view.Text(kUpper))));
        forward = view.Text(kForward);
        forward = Trimmed(forward.substr(0, forward.find('\1')));
        fillNo = Trimmed(view.Text(kFillNo));
        order.orderQty = static_cast<std::uint32_t>(Number(kOrderQty));
        order.fillQty = static_cast<std::uint32_t>(Number(kFillQty));
        if (mode == kInput && order.orderState == '6') {
            order.fillQty = order.orderQty;
        }
        order.orderPrice = Price(1132, 1136, 1135);
        order.triggerPrice = Price(1139, 1141, 1143);
        order.fillPrice = Price(1145, 1148, 1150);
        price2 = Price(1160, 1182, 1185);
        if (mode == kExercise && original) {  // its rows are out of sight and stay as they were loaded
            order.orderPrice = original->orderPrice;
            order.triggerPrice = original->triggerPrice;
            order.fillPrice = original->fillPrice;
        }
        whole = known;
        understood = Contract(whole);
        SetCommodity(whole, sign, whole.exchangeNo.Str(), whole.commodityType, whole.commodityNo.Str());
        if (!understood) {
            whole = known;
            whole.sign.Set(sign);
        }
        commodity = world.GetCommodity(&whole);
    }

    std::string Errors() {
        std::string errors;
        const auto error = [&](bool wrong, unsigned id) { errors += wrong ? texts(id) : ""; };
        error(order.accountNo.Empty(), 10012);
        error(order.upperNo.Empty(), 10013);
        error(Trimmed(view.Text(kContract)).empty(), mode == kCarry ? 10015 : 10014);
        error(Second() && forward.empty(), mode == kExercise ? 10016 : 10017);
        error(order.direction == 0, 10018);
        error(!commodity, 10019);
        if (commodity) {
            error(!Second() && !WholeTicks(order.orderPrice, *commodity), 10020);
            error(!Second() && !WholeTicks(order.triggerPrice, *commodity), 10021);
            contract = understood ? world.GetContract(&whole) : nullptr;
            error(!contract, mode == kCarry ? 10023 : 10022);
            error(contract && Is3MDate(*commodity, whole.contractNo.Str()), 10024);
            if (Second()) {
                ContractKey second = SecondKey();
                contract = world.GetContract(&second);
                if (noDate) {
                    return {};
                }
                error(!contract, mode == kExercise ? 10026 : 10027);
                error(contract && Is3MDate(*commodity, forward), 10024);
            }
        }
        const int orderQty = static_cast<int>(order.orderQty);
        const int fillQty = static_cast<int>(order.fillQty);
        const bool filled = Filled(order.orderState);
        const bool spread = whole.commodityType == 'm' || whole.commodityType == 'c';
        error(mode != kExercise && !order.orderType, 10028);
        error(mode != kExercise && !order.orderState, 10029);
        error(!Second() && !order.orderSource, 10030);
        error(mode != kExercise && !order.validType, 10031);
        error(!Second() && !spread && order.orderPrice == 0 &&
                  (order.orderType == '2' || order.orderType == '4'),
              10032);
        error(mode != kCarry && orderQty <= 0, 10033);
        error(!spread && order.triggerPrice == 0 && order.orderType == '4', 10034);
        error(Corrects() && !original, 10035);
        error(filled && fillNo.empty(), 10036);
        error(filled && fillQty <= 0, 10037);
        error(mode != kCarry && fillQty > orderQty, 10038);
        error(mode != kCarry && ((fillQty != 0 && fillQty == orderQty && order.orderState != '6') ||
                                 (fillQty > 0 && fillQty < orderQty && order.orderState != 'A' &&
                                  order.orderState != '5') ||
                                 (fillQty <= 0 && filled)),
              10039);
        return errors;
    }

    ContractKey SecondKey() {
        ContractKey key{};
        key.optionType = key.optionType2 = 'N';
        if (mode == kCarry) {
            SetCommodity(key, sign, whole.exchangeNo.Str(), whole.commodityType, whole.commodityNo.Str());
            key.contractNo.Set(forward);
            return key;
        }
        const std::string date = forward == "3M" ? world.threeMonthDate : forward;
        noDate = date == "3M";
        SetCommodity(key, commodity->sign.Str(), commodity->relatedExchangeNo.Str(),
                     commodity->relatedCommodityType, commodity->relatedCommodityNo.Str());
        key.contractNo.Set(date);
        return key;
    }

    std::string Warnings() const {
        std::string warnings;
        if (!commodity || !Filled(order.orderState)) {
            return warnings;
        }
        const auto doubt = [&](double price, unsigned ticks, unsigned zero) {
            warnings += WholeTicks(price, *commodity) ? "" : texts(ticks);
            warnings += price == 0 ? texts(zero) : "";
        };
        doubt(order.fillPrice, 10041, 10042);
        if (mode != kMove && (whole.commodityType == 'm' || whole.commodityType == 'c')) {
            doubt(price2, 10043, 10044);
        }
        return warnings;
    }

    void BuildOrder() {
        order.key = whole;
        order.flag137 = order.flag138 = 'N';
        order.forcedClose = view.Checked(kForceClose) ? 'Y' : 'N';
        const std::string number = order.accountNo.Str();
        const UserRecord* user = world.GetUser(number.c_str(), sign.c_str());
        order.updateOperator.Set(user ? user->group->operatorNo.Str() : "");
        order.updateTime.Set(kClock);
        if (mode == kInput || mode == kCarry) {
            order.inputOperator = order.updateOperator;
            order.inputTime.Set(kClock);
        } else if (original) {
            order.inputOperator = original->inputOperator;
            order.inputTime = original->inputTime;
        }
        if (order.validType == '2') {
            SYSTEMTIME t{};
            SendMessageA(view.Item(kDate), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&t));
            char text[40];
            std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay,
                          t.wHour, t.wMinute, t.wSecond);
            order.validUntil.Set(text);
        }
        order.systemNo.Set(view.Text(kSystemNo));
        order.exchangeSystemNo.Set(view.Text(kExSystemNo));
        if (original) {
            order.orderNo = original->orderNo;
            order.flag614 = original->flag614;
            order.text279 = original->text279;
        }
        order.contract = const_cast<ContractRecord*>(contract);
    }

    bool Send(Sequel& out) {
        switch (mode) {
            case kInput:
                return Input(out, order, fillNo, view.Checked(kFeeGiven) ? 'Y' : 'N', Fee(), 0, 0) &&
                       !out.Box(texts(10115), texts(10114), "Yes/No");
            case kCarry:
                return Carry(out);
            case kModify:
                return out.Send("SendOrder", order) || Tell(out, 10057, 10114);
            case kRemove:
                return out.Send("DeleteOrder", order.orderNo) || Tell(out, 10058, 10114);
            case kMove:
                return order.accountNo.View() == original->accountNo.View() ? !Tell(out, 10059, 10060)
                                                                            : out.Send("SendOrder", order);
            default:
                return ((order.direction == 'B' ? world.longQty : world.shortQty) >= order.orderQty ||
                        out.Box(texts(10116), texts(10114), "Yes/No")) &&
                       (out.Send("SendExercise", order) || Tell(out, 10061, 10114));
        }
    }
    bool Tell(Sequel& out, unsigned text, unsigned caption) const {
        out.Box(texts(text), texts(caption), "OK");
        return false;
    }

    double Fee() const { return view.Checked(kFeeGiven) ? std::atof(view.Text(kFee).c_str()) : 0; }

    // False when it failed.
    bool Input(Sequel& out, const OrderRecord& sent, const std::string& number, char feeGiven, double fee,
               char chosen, double position) {
        if (world.GetOrder(sent.orderNo)) {
            return !Tell(out, 10052, 10053);
        }
        const bool legs = TwoLegs(sent.key.commodityType);
        if (legs && chosen) {
            return !Tell(out, 10054, 10053);
        }
        if (!out.Send("SendOrder", sent)) {
            return Tell(out, 10056, 10114);
        }
        if (sent.fillQty == 0) {
            return true;
        }
        FillRecord fill{};
        std::memcpy(&fill.key, &sent.key, sizeof fill.key);
        fill.flag111 = 'N';
        fill.direction = sent.direction;
        fill.fillSource = sent.orderSource;
        fill.fillTime.Set(kClock);
        fill.exchangeFillNo.Set(number);
        fill.accountNo = sent.accountNo;
        fill.upperNo = sent.upperNo;
        fill.systemNo = sent.systemNo;
        fill.fillPrice = sent.fillPrice;
        fill.fillQty = sent.fillQty;
        fill.feeGiven = feeGiven;
        fill.fee = fee;
        fill.currencyNo.Set(FirstWord(view.Text(kCurrency)));
        fill.closePrice = position;
        fill.carryPair = chosen;
        if (!legs) {
            return out.Send("SendFill", fill);
        }
        FillRecord second = fill;
        Split(sent.key, fill.key, second.key);
        fill.exchangeFillNo.Set(number + "_1");
        second.exchangeFillNo.Set(number + "_2");
        second.fillPrice = price2;
        second.direction = Reversed(fill.direction);
        out.Send("SendFill", fill);
        return out.Send("SendFill", second);
    }

    bool Carry(Sequel& out) {
        order.orderPrice = order.fillPrice;
        order.orderQty = order.fillQty;
        const std::string date = forward == "3M" ? world.threeMonthDate : forward;
        const bool given = view.Checked(kFeeGiven);
        if (date == "3M" && !given) {
            return Tell(out, 10048, 10114);
        }
        const int days = Days(order.key.contractNo.Str(), date);
        if (days <= 0) {
            return Tell(out, days ? 10051 : 10049, 10050);
        }
        const std::string systemNo = view.Text(kSystemNo);
        order.systemNo.Set(systemNo + "_1");
        Input(out, order, fillNo + "_1", 'Y', 0, 1, Price(1154, 1165, 1170));
        order.systemNo.Set(systemNo + "_2");
        order.key.contractNo.Set(forward);
        order.direction = Reversed(order.direction);
        order.orderPrice = order.fillPrice = price2;
        return Input(out, order, fillNo + "_2", given || days <= 14 ? 'Y' : 'N', Fee(), 1,
                     Price(1172, 1189, 1194));
    }

    const int mode;
    const OrderRecord* original;
    std::string account, sign, firstContract;
    std::pair<int, std::string> lastShown;
    ContractKey known{};  // the contract that was understood last

    // Of one confirm.
    OrderRecord order{};
    std::string forward, fillNo;
    double price2 = 0;
    ContractKey whole{};
    bool understood = false;
    bool noDate = false;
    const CommodityRecord* commodity = nullptr;
    const ContractRecord* contract = nullptr;
};

}  // namespace

std::unique_ptr<Reader> OrderReader(const View& view, int mode, const OrderRecord* order, World& world,
                                    const Texts& texts) {
    return std::make_unique<OrderDialogReader>(view, mode, order, world, texts);
}
