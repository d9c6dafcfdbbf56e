#include "shown_is_sent/reader.h"

namespace {

enum Mode { kModify = 2, kRemove = 3 };

bool Alike(const std::string& a, const std::string& b) {
    return lstrcmpiA(a.c_str(), b.c_str()) == 0;
}

class FillDialogReader : public Reader {
public:
    FillDialogReader(const View& shown, int ofMode, const OrderRecord* ofOrder, const FillRecord* ofFill,
                     const Surroundings& surroundings)
        : Reader(shown, surroundings), mode(ofMode), order(ofOrder), fill(ofFill) {
        Keep(IDC_FILL_SOURCE);
        Keep(IDC_DIRECTION);
        firstContract = Trimmed(view.Text(IDC_FILL_CONTRACT));
        loaded.optionType2 = 'N';
        if (fill) {
            std::memcpy(&loaded, &fill->key, sizeof fill->key);
        } else if (order) {
            loaded = order->key;
        }
    }

    bool Foretell(Sequel& out) override {
        Read();
        if (!Passes(out, Errors(), Warnings())) {
            return false;
        }
        if (mode == kModify) {
            return Tell(out, IDS_SEND_MODIFY_FAILED);
        }
        if (mode == kRemove) {
            sent.fillNo.Set(fill ? fill->fillNo.View() : "");
            return out.Send("RemoveFill " + sent.fillNo.Str(), sent) || Tell(out, IDS_SEND_REMOVE_FAILED);
        }
        const int remaining = order ? static_cast<int>(order->orderQty - order->fillQty) : 0;
        if (remaining < static_cast<int>(sent.fillQty) &&
            !Ask(out, Say(IDS_ASK_FILL_ABOVE_REMAINING), IDS_TIPS, "Yes/No")) {
            return false;
        }
        const bool given = view.Checked(IDC_FILL_FEE_GIVEN);
        if (sent.fillSource == 'C') {
            return Carry(out, given);
        }
        sent.feeGiven = given ? 'Y' : 'N';
        return SendLegs(out);
    }

    std::string Contradiction() const override { return Misfit(Commodity(), {1150, 1185}, {1148, 1182}); }

private:
    bool Input() const { return mode != kModify && mode != kRemove; }
    bool OfSign(const FixedText<21>& sign) const {
        return loaded.sign.Empty() || loaded.sign.View() == sign.View();
    }
    std::string Shown(int id) const { return FirstWord(Trimmed(view.Text(id))); }

    // The host's own code for what the box shows in upper case: that of the chosen line, or the first alike.
    std::string Exchange() const {
        const std::string shown = Shown(IDC_EXCHANGE);
        std::vector<std::string> codes;
        for (const ExchangeRecord* exchange : world.exchanges) {
            if (OfSign(exchange->sign)) {
                codes.push_back(exchange->exchangeNo.Str());
            }
        }
        const auto line = static_cast<std::size_t>(view.Line(IDC_EXCHANGE));
        if (line < codes.size() && Alike(codes[line], shown)) {
            return codes[line];
        }
        codes.insert(codes.begin(), loaded.exchangeNo.Str());
        const auto alike = [&](const std::string& code) { return Alike(code, shown); };
        const auto found = std::find_if(codes.begin(), codes.end(), alike);
        return found == codes.end() ? shown : *found;
    }

    // The commodity of the chosen line, or the one that the text names: the first alike, the loaded one
    // before. Where none are listed, the code counts as it is shown, and the type is the loaded one.
    const CommodityRecord* Commodity() const {
        const std::string exchange = Exchange();
        const std::string shown = Shown(IDC_COMMODITY);
        const bool ofLoaded = exchange == loaded.exchangeNo.Str();
        const bool listed = SendDlgItemMessageA(view.dialog, IDC_COMMODITY, CB_GETCOUNT, 0, 0) > 0;
        const std::string entered =
            ofLoaded && Alike(loaded.commodityNo.Str(), shown) ? loaded.commodityNo.Str() : shown;
        const CommodityRecord* found = nullptr;
        int line = 0;
        for (const CommodityRecord* each : world.commodities) {
            if (!OfSign(each->sign) || each->exchangeNo != exchange) {
                continue;
            }
            const bool loadedType = each->commodityType == loaded.commodityType;
            if (listed ? Alike(each->commodityNo.Str(), shown)
                       : each->commodityNo == entered && (loadedType || !loaded.commodityType)) {
                if (line == view.Line(IDC_COMMODITY)) {
                    return each;
                }
                found = !found || (ofLoaded && loadedType) ? each : found;
            }
            ++line;
        }
        return found;
    }

    void Read() {
        commodity = Commodity();
        const std::string text = Trimmed(view.Text(IDC_FILL_CONTRACT));
        const std::string exchange = Exchange();
        const std::string code = commodity ? commodity->commodityNo.Str() : Shown(IDC_COMMODITY);
        if ((fill || order) && text == firstContract && loaded.exchangeNo == exchange &&
            loaded.commodityNo == code) {
            key = loaded;
        } else if (!ReadContract(exchange + ' ' + code + ' ' + text, key)) {
            key = {};
            key.optionType = key.optionType2 = 'N';
        }
        key.sign = loaded.sign;
        sent = {};
        std::memcpy(&sent.key, &key, sizeof sent.key);
        sent.key.exchangeNo.Set(exchange);
        sent.key.commodityNo.Set(code);
        sent.accountNo.Set(Shown(IDC_ACCOUNT));
        sent.upperNo.Set(Shown(IDC_UPPER));
        sent.systemNo.Set(view.Text(IDC_SYSTEM_NO));
        sent.exchangeFillNo.Set(view.Text(IDC_FILL_NO));
        sent.fillPrice = Price(1145, 1148, 1150);
        price2 = Price(1160, 1182, 1185);
        sent.fillQty = static_cast<std::uint32_t>(Number(IDC_FILL_QTY));
        sent.fillTime.Set(kClock);
        sent.fee = std::atof(view.Text(IDC_FEE).c_str());
        sent.currencyNo.Set(Shown(IDC_CURRENCY));
        sent.flag111 = 'N';
        sent.fillSource = Code(IDC_FILL_SOURCE, "EJPMSDR",
                               fill    ? fill->fillSource
                               : order ? order->orderSource
                                       : 0);
        sent.direction = Code(IDC_DIRECTION, "BS", fill ? fill->direction : order ? order->direction : 0);
    }

    std::string Errors() const {
        std::string errors;
        if (!commodity) {
            errors += Say(IDS_NO_COMMODITY);
        } else if (!world.GetContract(&key) || (Input() && key.commodityType != commodity->commodityType)) {
            errors += Say(IDS_CONTRACT_EMPTY);
        } else if (Is3MDate(*commodity, key.contractNo.Str())) {
            errors += Say(IDS_CONTRACT_IS_3M_DATE);
        }
        errors += static_cast<int>(sent.fillQty) < 1 ? Say(IDS_FILL_QTY_NOT_POSITIVE) : "";
        errors += Input() && !sent.direction ? Say(IDS_DIRECTION_EMPTY) : "";
        errors += Input() && !sent.fillSource ? Say(IDS_SOURCE_EMPTY) : "";
        return errors;
    }

    std::string Warnings() const {
        return (!commodity || WholeTicks(sent.fillPrice, *commodity) ? ""
                                                                     : Say(IDS_FILL_DIALOG_PRICE_NOT_TICKS)) +
               (sent.fillPrice == 0 ? Say(IDS_FILL_PRICE_ZERO) : "");
    }

    bool SendLegs(Sequel& out) {
        return Reader::SendLegs(out, sent, key, price2) || Tell(out, IDS_SEND_INPUT_FAILED);
    }

    // That there is no position to close.
    std::string Placeless() const {
        std::string contract = sent.key.sign.Str() + ' ' + sent.key.exchangeNo.Str() + ' ' +
                               sent.key.commodityNo.Str() + ' ' + sent.key.contractNo.Str();
        if (sent.key.commodityType == 'O') {
            contract += std::string(" ") + sent.key.optionType + sent.key.strikePrice.Str();
        }
        const std::string direction = Say(sent.direction == 'S' ? IDS_DIRECTION_BUY : IDS_DIRECTION_SELL);
        const std::string text = Say(IDS_NO_CLOSE_POSITION);
        const bool english = text.starts_with("%s");  // the Chinese texts name the contract first
        char message[500];
        std::snprintf(message, sizeof message, text.c_str(), (english ? direction : contract).c_str(),
                      (english ? contract : direction).c_str());
        return message;
    }

    bool Carry(Sequel& out, bool given) {
        if (IsOneOf(commodity->commodityType, "mc")) {
            return Tell(out, IDS_NO_SPREAD_CARRY, IDS_INPUT_FAILED_CAPTION);
        }
        const std::string open = Trimmed(view.Text(IDC_OPEN_CONTRACT));
        const int days = Days(sent.key.contractNo.Str(), open);
        if (days <= 0) {
            return Tell(out, days ? IDS_CLOSE_OPEN_CONTRACTS_REVERSED : IDS_SAME_CLOSE_OPEN_CONTRACTS);
        }
        if ((world.shortQty == 0 && sent.direction == 'B') || (world.longQty == 0 && sent.direction == 'S')) {
            Ask(out, Placeless(), IDS_TIPS, "OK");
            return false;
        }
        const double fee = sent.fee;
        sent.feeGiven = sent.carryPair = 'Y';
        sent.fee = 0;
        SendLegs(out);
        sent.fillPrice = price2;
        sent.direction = Reversed(sent.direction);
        sent.key.contractNo.Set(open);
        sent.fillNo.Set("~");
        sent.systemNo.Set(sent.systemNo.Str() + "~");
        sent.feeGiven = given ? 'Y' : 'N';
        sent.fee = given ? fee : 0;
        return SendLegs(out);
    }

    const int mode;
    const OrderRecord* order;
    const FillRecord* fill;
    ContractKey loaded{};
    std::string firstContract;

    // Of one confirm.
    FillRecord sent{};
    ContractKey key{};
    const CommodityRecord* commodity = nullptr;
    double price2 = 0;
};

}  // namespace

std::unique_ptr<Reader> FillReader(const View& view, int mode, const OrderRecord* order,
                                   const FillRecord* fill, const Surroundings& surroundings) {
    return std::make_unique<FillDialogReader>(view, mode, order, fill, surroundings);
}
