#pragma once

#include "book/book_file.h"
#include "book/contract_part.h"

#include <memory>
#include <string>

// The sample book and requests on it. Tests run in the project's folder.
inline const char kSampleBook[] = "host/data/sample_book.json";

inline std::unique_ptr<Book> Sample() {
    return ReadBookFile(kSampleBook);
}

inline ContractKey KeyOf(const std::string& sign, const std::string& name) {
    ContractKey key{};
    key.sign.Set(sign);
    if (!ReadContractName(name, key)) {
        throw std::invalid_argument(name);
    }
    return key;
}

// A new order as the order dialog sends it: state "filled" is only a claim until the fill arrives.
inline OrderRecord MakeOrder(const std::string& account, const std::string& contract, char direction,
                             double price, std::uint32_t qty, const std::string& systemNo,
                             const std::string& upper = "UP001") {
    OrderRecord order{};
    order.key = KeyOf("HQ", contract);
    order.accountNo.Set(account);
    order.orderType = '2';
    order.orderSource = 'M';
    order.validType = '0';
    order.forcedClose = order.flag137 = order.flag138 = 'N';
    order.direction = direction;
    order.orderPrice = price;
    order.orderQty = qty;
    order.systemNo.Set(systemNo);
    order.upperNo.Set(upper);
    order.orderState = '4';
    return order;
}

inline FillRecord MakeFill(const OrderRecord& order, const SingleContractKey& leg, char direction,
                           double price, std::uint32_t qty) {
    FillRecord fill{};
    fill.key = leg;
    fill.accountNo = order.accountNo;
    fill.fillSource = order.orderSource;
    fill.direction = direction;
    fill.flag111 = 'N';
    fill.exchangeFillNo.Set("M_0317142530123");
    fill.fillPrice = price;
    fill.fillQty = qty;
    fill.currencyNo.Set("USD");
    fill.feeGiven = 'N';
    fill.upperNo = order.upperNo;
    fill.systemNo = order.systemNo;
    return fill;
}

// All of an order for one leg, at its price.
inline FillRecord MakeFill(const OrderRecord& order) {
    return MakeFill(order, FirstLegOf(order.key), order.direction, order.orderPrice, order.orderQty);
}
