// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <msgpack.hpp>

#include <map>
#include <string>
#include <variant>
#include <vector>

#include "core/commands.h"
#include "core/plane.h"
#include "plugins/plane_payload.h"

namespace wib {

// What a method's parameter accepts on the wire.
enum class ArgType {
    Integer,   // a whole number in 32-bit signed range
    Short,     // a whole number in 16-bit signed range (coordinates, sizes)
    Channel,   // a whole number 0..255
    Flag,      // the program's boolean: -1 true, anything else false; true/false too
    Number,    // a finite number, whole or not
    Single,    // a finite number in single-precision range
    Text,      // a UTF-8 string
    Plane,     // [ubX, ubY, bin] with exactly (ubX + 1) * (ubY + 1) bytes, the bin
               // possibly received as a payload of its own
    Params,    // a map of names to integers, numbers, text or booleans
    Value,     // one integer, number, text or boolean
    Integers,  // an array of whole numbers in 32-bit signed range
};

struct ArgSpec {
    const char* name;
    ArgType type;
    bool optional = false;  // only trailing parameters are optional
};

// How a parameter type reads in the method reference.
const char* ArgTypeName(ArgType type);

// The arguments of one call, every one checked against its parameter.
class CallArgs {
  public:
    using Value = std::variant<long long, double, std::string, IntegerList, Plane,
                               std::map<std::string, ParamValue>>;

    std::size_t size() const { return values_.size(); }
    long long integer(std::size_t i) const { return std::get<long long>(values_.at(i)); }
    double number(std::size_t i) const;
    const std::string& text(std::size_t i) const { return std::get<std::string>(values_.at(i)); }
    // The plane moves out: setters take it over without copying again.
    Plane takePlane(std::size_t i) { return std::move(std::get<Plane>(values_.at(i))); }
    const IntegerList& integers(std::size_t i) const {
        return std::get<IntegerList>(values_.at(i));
    }
    const std::map<std::string, ParamValue>& params(std::size_t i) const {
        return std::get<std::map<std::string, ParamValue>>(values_.at(i));
    }
    // An integer, number or text argument as a command or control takes it.
    ParamValue value(std::size_t i) const;

    void add(Value value) { values_.push_back(std::move(value)); }

  private:
    std::vector<Value> values_;
};

// Checks `params` (the request's argument array) against `specs`: a wrong
// count, type or range throws RpcError 5. Planes take over the `payloads`
// their binaries refer to.
CallArgs DecodeArgs(const std::string& method, const std::vector<ArgSpec>& specs,
                    const msgpack::object& params, PlanePayloads& payloads);

}  // namespace wib
