#include "services/service_set.h"

ServiceSet::ServiceSet(Book& book, EventPosting posting)
    : events(listeners, std::move(posting)),
      api(book, faults, listeners),
      trade(book, api, faults, journal, &events),
      quotes(faults),
      config(book, faults),
      manager(faults) {
    // As the interface that the asker will cast it to: a void pointer keeps no type.
    manager.Offer("TradeApi", "1.0.0.1", static_cast<ITradeService*>(&trade));
    manager.Offer("QuoteDataCenter", "1.0.0.1", static_cast<IQuoteDataCenter*>(&quotes));
    manager.Offer("SysConfig", "9.0.3.1", static_cast<ISysConfig*>(&config));
    manager.Offer("Abnormal", "9.0.3.1", static_cast<IdleService*>(&abnormal));
    manager.Offer("AuxiInsertOrder", "9.0.3.1", static_cast<IdleService*>(&auxiInsertOrder));
    manager.Offer("BatchOrder", "1.0.0.1", static_cast<IdleService*>(&batchOrder));
    manager.Offer("GlobalMonitor", "9.0.3.1", static_cast<IdleService*>(&globalMonitor));
}
