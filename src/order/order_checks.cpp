#include "order/order_checks.h"

#include "entry/forward_market.h"
#include "entry/number_text.h"
#include "entry/telling.h"
#include "framework/trim_blanks.h"
#include "res/string_table.h"

#include <cstring>

namespace {

// Blanks around an entry belong to nothing that it names. The contract's text stays: with blanks around it
// the dialog has not taken it over, and what was taken over before must not go out under its name.
void TrimEntries(OrderForm& form) {
    for (std::string* text : {&form.account, &form.upper, &form.forwardContract, &form.exchangeFillNo}) {
        *text = TrimBlanks(*text);
    }
}

// One pass over an entry. Each step adds its findings; the order of the calls is the order of the messages.
class Checker {
public:
    Checker(const OrderForm& form, const TradeData& trade) : m_form(form), m_trade(trade) {}

    OrderFindings Run() {
        CheckTexts();
        m_commodity = m_trade.Commodity(CommodityKeyOf(m_form));
        if (!m_commodity) {
            Error(IDS_NO_COMMODITY);
        } else {
            CheckTicks();
            CheckContract();
            CheckSecondContract();
            if (m_findings.noUnderlyingDate) {
                return m_findings;
            }
        }
        CheckCodes();
        CheckAmounts();
        CheckFill();
        // The server knows a removed or moved order; the entry around it does not count.
        if ((Is(OrderMode::RemoveFilled) || Is(OrderMode::Move)) && m_form.original &&
            m_form.original->orderNo > 0) {
            m_findings.errors.clear();
        }
        if (m_findings.errors.empty()) {
            CheckFillPrices();
        }
        return m_findings;
    }

private:
    bool Is(OrderMode mode) const { return m_form.mode == mode; }
    bool Carry() const { return Is(OrderMode::Carry); }
    bool Exercise() const { return Is(OrderMode::Exercise); }
    // The carry and the exercise name a second contract.
    bool HasSecondContract() const { return Carry() || Exercise(); }
    double Value(const PriceRow& row) const { return PriceValue(row, m_form.denominator); }

    void Error(unsigned id) { m_findings.errors.push_back(id); }
    void ErrorIf(bool wrong, unsigned id) {
        if (wrong) {
            Error(id);
        }
    }

    void CheckTexts() {
        ErrorIf(m_form.account.empty(), IDS_ACCOUNT_EMPTY);
        ErrorIf(m_form.upper.empty(), IDS_UPPER_EMPTY);
        ErrorIf(TrimBlanks(m_form.contractText).empty(),
                Carry() ? IDS_NEAR_CONTRACT_EMPTY : IDS_CONTRACT_EMPTY);
        ErrorIf(HasSecondContract() && ForwardContractNo(m_form).empty(),
                Exercise() ? IDS_UNDERLYING_EMPTY : IDS_FORWARD_CONTRACT_EMPTY);
        ErrorIf(m_form.direction == 0, IDS_DIRECTION_EMPTY);
    }

    bool IsWholeTicks(double price) const {
        const double denominator = m_commodity->tickDenominator ? m_commodity->tickDenominator : 1;
        return ::IsWholeTicks(price, m_commodity->tickNumerator / denominator, kTickTolerance);
    }

    void CheckTicks() {
        if (HasSecondContract()) {
            return;
        }
        ErrorIf(!IsWholeTicks(Value(m_form.orderPrice)), IDS_ORDER_PRICE_NOT_TICKS);
        ErrorIf(!IsWholeTicks(Value(m_form.triggerPrice)), IDS_TRIGGER_PRICE_NOT_TICKS);
    }

    bool IsThreeMonthDate(const std::string& contractNo) const {
        return NamesThreeMonthDate(contractNo, *m_commodity, m_form.sign, m_trade);
    }

    void CheckContract() {
        const std::optional<ContractKey> key = ContractKeyOf(m_form);
        m_findings.contract = key ? m_trade.Contract(*key) : nullptr;
        if (!m_findings.contract) {
            Error(Carry() ? IDS_NO_NEAR_CONTRACT : IDS_NO_CONTRACT);
        } else {
            ErrorIf(IsThreeMonthDate(key->contractNo.Str()), IDS_CONTRACT_IS_3M_DATE);
        }
    }

    void CheckSecondContract() {
        if (!HasSecondContract()) {
            return;
        }
        const std::string entered = ForwardContractNo(m_form);
        const std::optional<ContractKey> key = Exercise() ? UnderlyingKey(entered) : ForwardKey(entered);
        m_findings.contract = key ? m_trade.Contract(*key) : nullptr;
        if (!key) {
            m_findings.noUnderlyingDate = true;
        } else if (!m_findings.contract) {
            Error(Exercise() ? IDS_NO_UNDERLYING : IDS_NO_FORWARD_CONTRACT);
        } else {
            ErrorIf(IsThreeMonthDate(entered), IDS_CONTRACT_IS_3M_DATE);
        }
    }

    // Nothing when the text is "3M" and its date is not known.
    std::optional<ContractKey> UnderlyingKey(const std::string& entered) const {
        const std::string contractNo = DatedContractNo(entered, m_form.sign, m_trade);
        if (contractNo == kThreeMonth) {
            return std::nullopt;
        }
        ContractKey key{};
        key.sign.Set(m_commodity->sign.View());
        key.exchangeNo.Set(m_commodity->relatedExchangeNo.View());
        key.commodityType = m_commodity->relatedCommodityType;
        key.commodityNo.Set(m_commodity->relatedCommodityNo.View());
        key.contractNo.Set(contractNo);
        key.optionType = key.optionType2 = 'N';
        return key;
    }

    ContractKey ForwardKey(const std::string& entered) const {
        const CommodityKey commodity = CommodityKeyOf(m_form);
        ContractKey key{};
        std::memcpy(&key, &commodity, sizeof(commodity));
        key.contractNo.Set(entered);
        key.optionType = key.optionType2 = 'N';
        return key;
    }

    void CheckCodes() {
        ErrorIf(!Exercise() && m_form.orderType == 0, IDS_ORDER_TYPE_EMPTY);
        ErrorIf(!Exercise() && m_form.orderState == 0, IDS_ORDER_STATE_EMPTY);
        ErrorIf(!HasSecondContract() && m_form.source == 0, IDS_SOURCE_EMPTY);
        ErrorIf(!Exercise() && m_form.validType == 0, IDS_VALID_TYPE_EMPTY);
    }

    void CheckAmounts() {
        const bool spread = IsSpread(m_form.commodityType);
        const bool limitStop = m_form.orderType == OrderType::kLimitStop;
        const bool limit = m_form.orderType == OrderType::kLimit || limitStop;
        ErrorIf(!HasSecondContract() && limit && !spread && Value(m_form.orderPrice) == 0,
                IDS_ORDER_PRICE_ZERO);
        ErrorIf(!Carry() && m_form.orderQty <= 0, IDS_ORDER_QTY_ZERO);
        ErrorIf(limitStop && !spread && Value(m_form.triggerPrice) == 0, IDS_TRIGGER_PRICE_ZERO);
        ErrorIf(CorrectsOrder(m_form.mode) && !m_form.original, IDS_NO_ORIGINAL_ORDER);
    }

    void CheckFill() {
        const bool hasFill = HasFill(m_form.orderState);
        ErrorIf(hasFill && m_form.exchangeFillNo.empty(), IDS_FILL_NO_EMPTY);
        ErrorIf(hasFill && m_form.fillQty <= 0, IDS_FILL_QTY_NOT_POSITIVE);
        if (Carry()) {
            return;
        }
        ErrorIf(m_form.fillQty > m_form.orderQty, IDS_FILL_QTY_ABOVE_ORDER);
        const bool filled = m_form.orderState == OrderState::kFilled;
        const bool whole = m_form.fillQty != 0 && m_form.fillQty == m_form.orderQty;
        const bool part = m_form.fillQty > 0 && m_form.fillQty < m_form.orderQty;
        ErrorIf((whole && !filled) || (part && (!hasFill || filled)) || (m_form.fillQty <= 0 && hasFill),
                IDS_FILL_QTY_NOT_OF_STATE);
    }

    // Doubtful, but the operator may know better.
    void CheckFillPrices() {
        if (!m_commodity || !HasFill(m_form.orderState)) {
            return;
        }
        WarnOf(Value(m_form.fillPrice), IDS_FILL_PRICE_NOT_TICKS, IDS_FILL_PRICE_ZERO);
        if (!Is(OrderMode::Move) && IsSpread(m_form.commodityType)) {
            WarnOf(Value(m_form.fillPrice2), IDS_FILL_PRICE2_NOT_TICKS, IDS_FILL_PRICE2_ZERO);
        }
    }

    void WarnOf(double price, unsigned notTicksId, unsigned zeroId) {
        if (!IsWholeTicks(price)) {
            m_findings.warnings.push_back(notTicksId);
        }
        if (price == 0) {
            m_findings.warnings.push_back(zeroId);
        }
    }

    const OrderForm& m_form;
    const TradeData& m_trade;
    const CommodityRecord* m_commodity = nullptr;
    OrderFindings m_findings;
};

std::string JoinTexts(const std::vector<unsigned>& ids) {
    std::string text;
    for (const unsigned id : ids) {
        text += ResString(id);
    }
    return text;
}

}  // namespace

OrderFindings FindOrderProblems(const OrderForm& form, const TradeData& trade) {
    return Checker(form, trade).Run();
}

OrderCheck CheckOrder(OrderForm& form, const TradeData& trade, IPrompt& prompt) {
    TrimEntries(form);
    if (form.mode == OrderMode::Input && form.orderState == OrderState::kFilled) {
        form.fillQty = form.orderQty;
    }
    const OrderFindings findings = FindOrderProblems(form, trade);
    OrderCheck check;
    if (findings.noUnderlyingDate) {
        Tell(prompt, IDS_NO_UNDERLYING_DATE);
        return check;
    }
    if (!findings.errors.empty()) {
        Tell(prompt, JoinTexts(findings.errors), IDS_OPERATION_FAILED);
        return check;
    }
    if (!findings.warnings.empty()) {
        const std::string text = JoinTexts(findings.warnings) + ResString(IDS_CONFIRM_WARNINGS);
        const PromptAnswer answer = prompt.Ask(text, ResString(IDS_CONFIRM_CAPTION), PromptButtons::OkCancel);
        if (answer != PromptAnswer::Ok || !prompt.DialogExists()) {
            check.priceDoubted = prompt.DialogExists();
            return check;
        }
    }
    check.contract = findings.contract;
    check.passed = check.contract != nullptr;
    return check;
}

bool ConfirmElectronicOrder(const OrderForm& form, IPrompt& prompt) {
    if (!CorrectsOrder(form.mode) || !form.original || form.original->backOffice == 'Y') {
        return true;
    }
    const PromptAnswer answer =
        prompt.AskColoured(ResString(IDS_CONFIRM_NOT_INPUT), ResString(IDS_CONFIRM_CAPTION));
    return answer == PromptAnswer::Ok && prompt.DialogExists();
}
