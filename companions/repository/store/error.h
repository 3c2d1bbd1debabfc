#pragma once

#include <stdexcept>
#include <string>

namespace repository::store {

/// The automation error numbers that the store's failures carry; a host sees 0x800A0000 + number.
enum class Number : unsigned short {
    invalidCall = 5,
    overflow = 6,
    outOfMemory = 7,
    subscriptOutOfRange = 9,
    typeMismatch = 13,
    interrupted = 18,
    internal = 51,
    fileNotFound = 53,
    deviceError = 57,
    fileExists = 58,
    diskFull = 61,
    permissionDenied = 70,
    pathFileAccess = 75,
    pathNotFound = 76,
    objectNotSet = 91,
    invalidUseOfNull = 94,
    invalidFileFormat = 321,
    invalidPropertyValue = 380,
    keyInUse = 457,
    elementNotFound = 35601,
};

/// What every failing operation of the store throws. The text is UTF-8 and meant for the user.
class Error : public std::runtime_error {
public:
    Error(Number number, const std::string& text) : std::runtime_error(text), number_(number) {}

    Number ErrorNumber() const { return number_; }

private:
    Number number_;
};

}  // namespace repository::store
