#include "probe/requests.h"

#include "trade/contract_text.h"

#include <cstdlib>
#include <sstream>

namespace {

bool IsOperation(const std::string& word) {
    return word == "SendOrder" || word == "DeleteOrder" || word == "SendFill" || word == "RemoveFill" ||
           word == "SendExercise";
}

// What both records have under the same name.
template <typename Record>
bool SetCommonField(Record& record, const std::string& name, const std::string& value) {
    if (name == "sign") {
        record.key.sign.Set(value);
    } else if (name == "accountNo") {
        record.accountNo.Set(value);
    } else if (name == "upperNo") {
        record.upperNo.Set(value);
    } else if (name == "systemNo") {
        record.systemNo.Set(value);
    } else if (name == "direction") {
        record.direction = value[0];
    } else {
        return false;
    }
    return true;
}

bool SetField(Request& request, const std::string& name, const std::string& value) {
    if (value.empty()) {
        return false;
    }
    const bool common = SetCommonField(request.order, name, value);
    SetCommonField(request.fill, name, value);
    if (name == "type") {
        request.order.key.commodityType = request.fill.key.commodityType = value[0];
    } else if (name == "quantity") {
        request.order.orderQty = request.fill.fillQty = static_cast<std::uint32_t>(std::atoi(value.c_str()));
    } else if (name == "price") {
        request.order.orderPrice = request.fill.fillPrice = std::atof(value.c_str());
    } else if (name == "state") {
        request.order.orderState = value[0];
    } else if (name == "orderNo") {
        request.order.orderNo = static_cast<std::uint32_t>(std::atoi(value.c_str()));
    } else if (name == "fillNo") {
        request.fill.fillNo.Set(value);
    } else if (name == "currencyNo") {
        request.fill.currencyNo.Set(value);
    } else {
        return common;
    }
    return true;
}

bool SetContract(Request& request, const std::string& text) {
    ContractKey key{};
    if (!ParseContractText(text, key)) {
        return false;
    }
    key.sign = request.order.key.sign;
    if (request.order.key.commodityType) {
        key.commodityType = request.order.key.commodityType;
    }
    request.order.key = key;
    request.fill.key = FirstLegOf(key);
    return true;
}

// The rest of what the dialogs fill in by themselves.
void SetDefaults(Request& request) {
    OrderRecord& order = request.order;
    order.orderType = '2';
    order.orderSource = request.fill.fillSource = 'M';
    order.validType = '0';
    order.forcedClose = order.flag137 = order.flag138 = 'N';
    order.orderState = '4';
    request.fill.flag111 = request.fill.feeGiven = 'N';
    order.systemNo.Set("S_PROBE");
    request.fill.systemNo.Set("S_PROBE");
    request.fill.exchangeFillNo.Set("M_PROBE");
}

bool ReadLine(const std::string& line, Request& request) {
    std::istringstream words(line);
    words >> request.operation;
    request.line = line;
    SetDefaults(request);
    std::string word;
    while (words >> word) {
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        if (equals == std::string::npos) {
            return false;
        }
        std::string value = word.substr(equals + 1);
        if (name == "contract") {  // it has blanks, and stands last
            std::string rest;
            std::getline(words, rest);
            if (!SetContract(request, value + rest)) {
                return false;
            }
        } else if (!SetField(request, name, value)) {
            return false;
        }
    }
    return IsOperation(request.operation);
}

// What an exercised option turns into: the contract of its month in its underlying commodity.
ContractRecord* Underlying(const ContractKey& option, const TradeData& data) {
    const CommodityRecord* commodity = data.Commodity(CommodityOf(option));
    if (!commodity) {
        return nullptr;
    }
    ContractKey key{};
    key.sign = option.sign;
    key.exchangeNo = commodity->relatedExchangeNo;
    key.commodityType = commodity->relatedCommodityType;
    key.commodityNo = commodity->relatedCommodityNo;
    key.contractNo = option.contractNo;
    key.optionType = key.optionType2 = 'N';
    return const_cast<ContractRecord*>(data.Contract(key));
}

bool Send(Request& request, const TradeRequests& service) {
    if (request.operation == "SendOrder") {
        return service.SendOrder(request.order);
    }
    if (request.operation == "DeleteOrder") {
        return service.DeleteOrder(request.order.orderNo);
    }
    if (request.operation == "SendFill") {
        return service.SendFill(request.fill);
    }
    if (request.operation == "RemoveFill") {
        return service.RemoveFill(request.fill);
    }
    return service.SendExercise(request.order);
}

}  // namespace

std::vector<Request> ReadRequests(const std::string& text, Findings& findings) {
    std::vector<Request> requests;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.empty() || line[0] == '#') {
            continue;
        }
        Request request;
        if (ReadLine(line, request)) {
            requests.push_back(request);
        } else {
            findings.Add(Kind::kBadRequestFile, "EmendoProbe.send", line);
        }
    }
    return requests;
}

void SendRequests(std::vector<Request>& requests, const TradeRequests& service, const TradeData& data,
                  CallWatch& watch) {
    for (Request& request : requests) {
        if (request.operation == "SendExercise") {
            request.order.contract = Underlying(request.order.key, data);
        }
        const bool sent = watch.Watch(request.operation.c_str(), [&] { return Send(request, service); });
        if (!sent) {
            watch.Found().Add(Kind::kRequestRefused, request.operation, request.line);
        }
    }
}
