// The trap every operation runs under. An operation that can fail reports a fault as its failure:
// its fixed prefix ("TConfigureTessaly.UpdateRegistry() Failed - ") and the fault's description
// become its error message. A form routine ends quietly instead: no message, no log line.
#pragma once

#include <exception>
#include <string>
#include <string_view>

// The description of the fault being handled; call it inside a catch block only.
inline std::string faultDescription() {
    try {
        throw;
    } catch (const std::exception& fault) {
        return fault.what();
    } catch (...) {
        return "unknown error";
    }
}

// Runs `body`, which returns true when it failed without a fault. `failed` is set on entry and
// holds the body's result once it has run to its end; a fault sets `message` to `prefix` and the
// fault's description and leaves `failed` set. Returns true when a fault was trapped, for the
// callers that log it.
template <typename Body>
bool trapped(std::string& message, std::string_view prefix, bool& failed, Body&& body) {
    failed = true;
    try {
        failed = body();
        return false;
    } catch (...) {
        message = std::string(prefix) + faultDescription();
        failed = true;
        return true;
    }
}

// Runs a routine that ends silently on a fault, leaving whatever it had done so far.
template <typename Body> void quietly(Body&& body) noexcept {
    try {
        body();
    } catch (...) {
    }
}
