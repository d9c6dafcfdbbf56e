#pragma once

#include "trade/sample_book.h"

// A small book for the fill dialog: exchange EXA, and EXF on the forward market; sign SG. And an order of it.
struct FillBook : SampleBook {
    OrderRecord order = OrderOf("EXA CM 1509");

    FillBook() : SampleBook("SG") {
        for (const char* account : {"100010", "10001", "10002"}) {
            AddUser(account);
        }
        AddUpper("UP1");
        AddUpper("UP2");
        AddCurrency("EUR");
        AddCurrency("USD");
        AddExchange("EXA");
        AddCommodity('F', "CM", 1, 1);
        AddCommodity('F', "DN", 0.5, 1);
        AddCommodity('F', "TR", 1, 8);
        AddPair('m', "CM", 1, 'F', "CM", "CM");
        AddPair('u', "OP", 1, 'O', "OP", "OP");
        AddPair('c', "CM&DN", 1, 'F', "CM", "DN");
        AddExchange("EXF", "Forward", true);
        AddCommodity('F', "CA", 0.25, 1).rollingCode = 'U';
        AddExchange("EXG", "Second forward", true);
        for (const char* text :
             {"EXA CM 1509", "EXA DN 1509", "EXA TR 1509", "EXA CM 1509/1512", "EXA OP 1509 C3000/1509 C3100",
              "EXA CM&DN 1509", "EXF CA 150320", "EXF CA 150618", "EXF CA 3M"}) {
            AddContract(text);
        }
        longQty = shortQty = 9;
    }

    // An order for 5 lots, 2 of them filled at 97.
    static OrderRecord OrderOf(const char* contract) {
        OrderRecord record{};
        ParseContractText(contract, record.key);
        record.key.sign.Set("SG");
        record.accountNo.Set("10001");
        record.upperNo.Set("UP2");
        record.orderSource = 'M';
        record.direction = 'B';
        record.orderQty = 5;
        record.fillQty = 2;
        record.fillPrice = 97;
        record.orderNo = 4711;
        record.systemNo.Set("SYS7");
        return record;
    }
    // A sale of 4 lots at 97, said to be of the order.
    FillRecord FillOf(const char* contract, char source = 'E') {
        FillRecord record{};
        record.key = FirstLegOf(OrderOf(contract).key);
        record.fillNo.Set("F77");
        record.accountNo.Set("10001");
        record.upperNo.Set("UP1");
        record.fillSource = source;
        record.direction = 'S';
        record.fillQty = 4;
        record.fillPrice = 97;
        record.exchangeFillNo.Set("X9");
        record.systemNo.Set("SYS-OF-FILL");
        record.order = &order;
        return record;
    }
};
