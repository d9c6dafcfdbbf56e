#pragma once

#include "book/record_json.h"
#include "scenario/script.h"

#include <span>
#include <string>

// Compares a request with what a scenario says about it: "FIELD=VALUE" words and pairs of "bytes" and
// "OFFSET:HEX". `request` is a line of the journal. Returns what differs; empty when nothing does. Throws
// std::invalid_argument for words that mean nothing.
std::string CheckRequest(const Json& request, std::span<const Word> expected);

// The same for the fields of a record alone.
std::string CheckFields(const Json& fields, std::span<const Word> expected);
