#pragma once

#include "order/input_submission.h"

// Waits while this thread's windows go on handling their messages. A pending quit ends the wait and stays
// pending.
class MessagePause final : public IPause {
public:
    void Wait(int milliseconds) override;
};
