#pragma once

#include "book/catalogue.h"
#include "book/ledger.h"

#include <stdexcept>
#include <string>

// Everything that the substitute trade server knows. Not movable: records are handed out by address.
struct Book {
    Catalogue catalogue;
    Ledger ledger{catalogue};
};

// Why a book file was refused: the file, the place in it (a line for a syntax error, otherwise a JSON pointer
// such as "/exchanges/0/commodities/3") and the reason. what() has all three in one line.
class BookFileError : public std::runtime_error {
public:
    BookFileError(const std::string& inFile, const std::string& atPlace, const std::string& why)
        : std::runtime_error(inFile + ": " + atPlace + ": " + why),
          file(inFile),
          place(atPlace),
          reason(why) {}
    std::string file;
    std::string place;
    std::string reason;
};
