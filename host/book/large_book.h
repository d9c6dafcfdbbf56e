#pragma once

#include "book/book.h"

#include <memory>

// A made-up book of any size, the same on every call: `accounts` accounts under one sign in one tradable
// group, `exchanges` exchanges with together `commodities` futures commodities and `contracts` contracts,
// spread evenly. Accounts are "A000000"..., exchanges "X0"..., commodities "C0"..., contracts "00000"...
// Every count but accounts must be 1 or more.
std::unique_ptr<Book> MakeLargeBook(int accounts, int exchanges, int commodities, int contracts);
