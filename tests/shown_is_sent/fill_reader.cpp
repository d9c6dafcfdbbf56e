#include "shown_is_sent/reading.h"

namespace {

enum : int { kModify = 2, kRemove = 3 };
enum : int {
    kFillNo = 1153,
    kSystemNo = 1054,
    kUpper = 1039,
    kAccount = 1037,
    kSource = 1158,
    kQty = 1129,
    kExchange = 1122,
    kCommodity = 1051,
    kContract = 1056,
    kDirection = 1052,
    kOpenContract = 1058,
    kCurrency = 1164,
    kFeeGiven = 1165,
    kFee = 1167,
};

class FillDialogReader : public BothReaders {
public:
    FillDialogReader(const View& shown, int ofMode, const OrderRecord* ofOrder, const FillRecord* ofFill,
                     World& host, const Texts& strings)
        : BothReaders(shown, host, strings), mode(ofMode), order(ofOrder), fill(ofFill) {
        for (const int id : {kSource, kDirection}) {
            Keep(id);
        }
        firstContract = view.Text(kContract);
        if (fill) {
            loaded.optionType2 = 'N';
            std::memcpy(&loaded, &fill->key, sizeof fill->key);
        } else if (order) {
            loaded = order->key;
        }
        sign = loaded.sign.Str();
    }

    bool Foretell(Sequel& out) override {
        Read();
        const std::string errors = Errors();
        if (!errors.empty()) {
            out.Box(errors, texts(10040), "OK");
            return false;
        }
        std::string warnings = WholeTicks(sent.fillPrice, *commodity) ? "" : texts(10066);
        warnings += sent.fillPrice == 0 ? texts(10042) : "";
        if (!warnings.empty() && !out.Box(warnings + texts(10045), texts(10046), "OK/Cancel")) {
            return false;
        }
        if (mode == kModify) {
            return Tell(out, 10057);
        }
        if (mode == kRemove) {
            if (fill) {
                sent.fillNo = fill->fillNo;
            }
            return out.Send("RemoveFill " + sent.fillNo.Str(), sent) || Tell(out, 10058);
        }
        const int remaining = order ? static_cast<int>(order->orderQty - order->fillQty) : 0;
        if (remaining < static_cast<int>(sent.fillQty) && !out.Box(texts(10120), texts(10114), "Yes/No")) {
            return false;
        }
        if (sent.fillSource == 'C') {
            return Carry(out);
        }
        sent.feeGiven = view.Checked(kFeeGiven) ? 'Y' : 'N';
        return SendLegs(out);
    }

    std::string Contradiction() const override {
        const CommodityRecord* shown = Commodity();
        for (const int row : {0, 1}) {
            if (shown && Number(row ? 1185 : 1150) != static_cast<int>(shown->tickDenominator)) {
                return "denominator " + std::to_string(row + 1) + " is not the commodity's";
            }
            if (shown && shown->tickDenominator < 2 && Number(row ? 1182 : 1148) != 0) {
                return "numerator " + std::to_string(row + 1) + " without fractions";
            }
        }
        return {};
    }

private:
    bool Input() const { return mode != kModify && mode != kRemove; }

    // The host's own code for what an upper-case box shows.
    std::string Exchange() const {
        const std::string shown = Trimmed(FirstWord(view.Text(kExchange)));
        if (Alike(shown, loaded.exchangeNo.Str())) {
            return loaded.exchangeNo.Str();
        }
        std::vector<std::string> codes;
        for (const ExchangeRecord* exchange : world.exchanges) {
            if (sign.empty() || exchange->sign == sign) {
                codes.push_back(exchange->exchangeNo.Str());
            }
        }
        const auto line = static_cast<std::size_t>(view.Line(kExchange));
        if (line < codes.size() && Alike(codes[line], shown)) {
            return codes[line];
        }
        for (const std::string& code : codes) {
            if (Alike(code, shown)) {
                return code;
            }
        }
        return shown;
    }

    // The chosen line, or the first that the text names; the record's own as long as it stands there.
    const CommodityRecord* Commodity() const {
        const std::string exchange = Exchange();
        const std::string shown = Trimmed(FirstWord(view.Text(kCommodity)));
        std::vector<const CommodityRecord*> listed;
        for (const CommodityRecord* each : world.commodities) {
            if ((sign.empty() || each->sign == sign) && each->exchangeNo == exchange) {
                listed.push_back(each);
            }
        }
        const auto line = static_cast<std::size_t>(view.Line(kCommodity));
        if (line < listed.size() && Alike(listed[line]->commodityNo.Str(), shown) && line != firstLine) {
            return listed[line];
        }
        const CommodityRecord* found = nullptr;
        for (const CommodityRecord* each : listed) {
            const bool own =
                each->commodityType == loaded.commodityType && exchange == loaded.exchangeNo.Str();
            if (Alike(each->commodityNo.Str(), shown) && (!found || own)) {
                found = each;
            }
        }
        return found;
    }

    void Read() {
        sent = {};
        commodity = Commodity();
        const std::string text = Trimmed(view.Text(kContract));
        const std::string exchange = Exchange();
        const std::string code =
            commodity ? commodity->commodityNo.Str() : Trimmed(FirstWord(view.Text(kCommodity)));
        const bool own = (fill || order) && text == Trimmed(firstContract) &&
                         exchange == loaded.exchangeNo.Str() && code == loaded.commodityNo.Str();
        if (own) {
            key = loaded;
        } else if (!ReadContract(exchange + ' ' + code + ' ' + text, key)) {
            key = {};
            key.optionType = key.optionType2 = 'N';
        }
        key.sign.Set(sign);
        sent.key.sign.Set(sign);
        sent.key.exchangeNo.Set(exchange);
        sent.key.commodityNo.Set(code);
        sent.key.commodityType = key.commodityType;
        sent.key.contractNo = key.contractNo;
        sent.key.strikePrice = key.strikePrice;
        sent.key.optionType = key.optionType;
        sent.accountNo.Set(Trimmed(FirstWord(Trimmed(view.Text(kAccount)))));
        sent.upperNo.Set(Trimmed(FirstWord(Trimmed(view.Text(kUpper)))));
        sent.systemNo.Set(view.Text(kSystemNo));
        sent.exchangeFillNo.Set(view.Text(kFillNo));
        sent.fillPrice = Price(1145, 1148, 1150);
        price2 = Price(1160, 1182, 1185);
        sent.fillQty = static_cast<std::uint32_t>(Number(kQty));
        sent.fillTime.Set(kClock);
        sent.fee = std::atof(view.Text(kFee).c_str());
        sent.currencyNo.Set(FirstWord(view.Text(kCurrency)));
        sent.flag111 = 'N';
        sent.fillSource = Code(kSource, "EJPMSDR", fill ? fill->fillSource : order ? order->orderSource : 0);
        sent.direction = Code(kDirection, "BS", fill ? fill->direction : order ? order->direction : 0);
    }

    std::string Errors() const {
        std::string errors;
        if (!commodity) {
            errors += texts(10019);
        } else if (!world.GetContract(&key) || (Input() && key.commodityType != commodity->commodityType)) {
            errors += texts(10014);
        } else if (Is3MDate(*commodity, key.contractNo.Str())) {
            errors += texts(10024);
        }
        errors += static_cast<int>(sent.fillQty) < 1 ? texts(10037) : "";
        errors += Input() && !sent.direction ? texts(10018) : "";
        errors += Input() && !sent.fillSource ? texts(10030) : "";
        return errors;
    }

    bool Tell(Sequel& out, unsigned text, unsigned caption = 10114) const {
        out.Box(texts(text), texts(caption), "OK");
        return false;
    }

    bool SendLegs(Sequel& out) {
        if (!TwoLegs(commodity->commodityType)) {
            return out.Send("SendFill", sent) || Tell(out, 10056);
        }
        const std::string number = sent.exchangeFillNo.Str();
        SingleContractKey second{};
        Split(key, sent.key, second);
        sent.exchangeFillNo.Set(number + "_1");
        out.Send("SendFill", sent);
        sent.fillPrice = price2;
        sent.key = second;
        sent.exchangeFillNo.Set(number + "_2");
        sent.direction = Reversed(sent.direction);
        return out.Send("SendFill", sent) || Tell(out, 10056);
    }

    std::string Placeless() const {
        const std::string contract = sent.key.sign.Str() + ' ' + sent.key.exchangeNo.Str() + ' ' +
                                     sent.key.commodityNo.Str() + ' ' + sent.key.contractNo.Str();
        const char type = sent.key.commodityType;
        const std::string named = type == 'O'
                                      ? contract + ' ' + sent.key.optionType + sent.key.strikePrice.Str()
                                  : type && std::strchr("FGY", type) ? contract
                                                                     : "";
        const char direction = Reversed(sent.direction);
        const std::string word = direction == 'B'   ? texts(10070)
                                 : direction == 'S' ? texts(10071)
                                 : direction == 'A' ? texts(10072)
                                                    : std::string(1, direction);
        const std::string text = texts(10069);
        const bool english = text.starts_with("%s");
        char message[500];
        std::snprintf(message, sizeof message, text.c_str(), (english ? word : named).c_str(),
                      (english ? named : word).c_str());
        return message;
    }

    bool Carry(Sequel& out) {
        if (commodity->commodityType == 'm' || commodity->commodityType == 'c') {
            return Tell(out, 10054, 10053);
        }
        const std::string open = Trimmed(view.Text(kOpenContract));
        const int days = Days(sent.key.contractNo.Str(), open.substr(0, 19));
        if (days <= 0) {
            return Tell(out, days ? 10068 : 10067);
        }
        if ((world.shortQty == 0 && sent.direction == 'B') || (world.longQty == 0 && sent.direction == 'S')) {
            out.Box(Placeless(), texts(10114), "OK");
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
        sent.feeGiven = view.Checked(kFeeGiven) ? 'Y' : 'N';
        sent.fee = view.Checked(kFeeGiven) ? fee : 0;
        return SendLegs(out);
    }

    const int mode;
    const OrderRecord* order;
    const FillRecord* fill;
    ContractKey loaded{};
    std::string sign, firstContract;
    std::size_t firstLine = static_cast<std::size_t>(-2);

    // Of one confirm.
    FillRecord sent{};
    ContractKey key{};
    const CommodityRecord* commodity = nullptr;
    double price2 = 0;
};

}  // namespace

std::unique_ptr<Reader> FillReader(const View& view, int mode, const OrderRecord* order,
                                   const FillRecord* fill, World& world, const Texts& texts) {
    return std::make_unique<FillDialogReader>(view, mode, order, fill, world, texts);
}
