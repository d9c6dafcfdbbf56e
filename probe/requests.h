#pragma once

#include "probe/host_watch.h"
#include "probe/record_checks.h"

#include <string>
#include <vector>

// A request that the file beside the probe asks it to send. docs/integrating.md describes the lines.
struct Request {
    std::string line;
    std::string operation;  // "SendOrder" ... "SendExercise"
    OrderRecord order{};    // of SendOrder, SendExercise, DeleteOrder
    FillRecord fill{};      // of SendFill, RemoveFill
};

// One request a line; empty lines and lines that begin with '#' are left out, one that cannot be read is a
// finding.
std::vector<Request> ReadRequests(const std::string& text, Findings& findings);

// Sends them in order, each as the dialogs send it, and notes every one that was not taken.
void SendRequests(std::vector<Request>& requests, const TradeRequests& service, const TradeData& data,
                  CallWatch& watch);
