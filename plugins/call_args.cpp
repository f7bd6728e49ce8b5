// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/call_args.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

#include "core/document_limits.h"
#include "plugins/rpc_error.h"
#include "plugins/utf8.h"

namespace wib {

namespace {

std::optional<long long> WholeNumber(const msgpack::object& o) {
    if (o.type == msgpack::type::POSITIVE_INTEGER &&
        o.via.u64 <= static_cast<std::uint64_t>(std::numeric_limits<long long>::max())) {
        return static_cast<long long>(o.via.u64);
    }
    if (o.type == msgpack::type::NEGATIVE_INTEGER) {
        return o.via.i64;
    }
    return std::nullopt;
}

std::optional<double> AnyNumber(const msgpack::object& o) {
    if (const auto whole = WholeNumber(o)) {
        return static_cast<double>(*whole);
    }
    if ((o.type == msgpack::type::FLOAT32 || o.type == msgpack::type::FLOAT64) &&
        std::isfinite(o.via.f64)) {
        return o.via.f64;
    }
    return std::nullopt;
}

std::optional<std::string> Utf8Text(const msgpack::object& o) {
    if (o.type != msgpack::type::STR || !IsValidUtf8(o.via.str.ptr, o.via.str.size)) {
        return std::nullopt;
    }
    return std::string(o.via.str.ptr, o.via.str.size);
}

// An integer, number, text or boolean (as -1 / 0), as commands and controls take them.
std::optional<ParamValue> Scalar(const msgpack::object& o) {
    if (o.type == msgpack::type::BOOLEAN) {
        return ParamValue{o.via.boolean ? -1LL : 0LL};
    }
    if (const auto whole = WholeNumber(o)) {
        return ParamValue{*whole};
    }
    if (const auto number = AnyNumber(o)) {
        return ParamValue{*number};
    }
    if (auto text = Utf8Text(o)) {
        return ParamValue{std::move(*text)};
    }
    return std::nullopt;
}

// A command parameter: a scalar, or an array of whole numbers (an integer list).
std::optional<ParamValue> CommandValue(const msgpack::object& o) {
    if (o.type != msgpack::type::ARRAY) {
        return Scalar(o);
    }
    IntegerList list;
    for (std::uint32_t i = 0; i < o.via.array.size; ++i) {
        const auto whole = WholeNumber(o.via.array.ptr[i]);
        if (!whole) {
            return std::nullopt;
        }
        list.push_back(*whole);
    }
    return ParamValue{std::move(list)};
}

class Decoder {
  public:
    Decoder(const std::string& method, const ArgSpec& spec, PlanePayloads& payloads)
        : method_(method), spec_(spec), payloads_(payloads) {}

    CallArgs::Value decode(const msgpack::object& o) const {
        switch (spec_.type) {
            case ArgType::Integer:
                return ranged(o, std::numeric_limits<std::int32_t>::min(),
                              std::numeric_limits<std::int32_t>::max());
            case ArgType::Short:
                return ranged(o, std::numeric_limits<std::int16_t>::min(),
                              std::numeric_limits<std::int16_t>::max());
            case ArgType::Channel:
                return ranged(o, 0, 255);
            case ArgType::Flag:
                if (o.type == msgpack::type::BOOLEAN) {
                    return o.via.boolean ? -1LL : 0LL;
                }
                return ranged(o, std::numeric_limits<std::int32_t>::min(),
                              std::numeric_limits<std::int32_t>::max());
            case ArgType::Number:
                return number(o, std::numeric_limits<double>::max());
            case ArgType::Single:
                return number(o, std::numeric_limits<float>::max());
            case ArgType::Text:
                if (auto text = Utf8Text(o)) {
                    return std::move(*text);
                }
                throw wrong("UTF-8 text");
            case ArgType::Plane:
                return plane(o);
            case ArgType::Params:
                return params(o);
            case ArgType::Value:
                if (auto value = Scalar(o)) {
                    return std::visit([](auto&& v) -> CallArgs::Value { return v; }, *value);
                }
                throw wrong("an integer, number, text or boolean");
            case ArgType::Integers:
                return integers(o);
        }
        throw wrong("a value");
    }

  private:
    RpcError wrong(const std::string& expected) const {
        return BadCall(method_ + ": " + spec_.name + " must be " + expected);
    }

    long long ranged(const msgpack::object& o, long long low, long long high) const {
        const auto value = WholeNumber(o);
        if (!value || *value < low || *value > high) {
            throw wrong("a whole number from " + std::to_string(low) + " to " +
                        std::to_string(high));
        }
        return *value;
    }

    IntegerList integers(const msgpack::object& o) const {
        if (o.type != msgpack::type::ARRAY) {
            throw wrong("an array of whole numbers");
        }
        IntegerList list;
        list.reserve(o.via.array.size);
        for (std::uint32_t i = 0; i < o.via.array.size; ++i) {
            list.push_back(ranged(o.via.array.ptr[i], std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max()));
        }
        return list;
    }

    double number(const msgpack::object& o, double limit) const {
        const auto value = AnyNumber(o);
        if (!value || std::fabs(*value) > limit) {
            throw wrong("a finite number");
        }
        return *value;
    }

    Plane plane(const msgpack::object& o) const {
        if (o.type != msgpack::type::ARRAY || o.via.array.size != 3) {
            throw wrong("a plane [ubX, ubY, bytes]");
        }
        const auto ubX = WholeNumber(o.via.array.ptr[0]);
        const auto ubY = WholeNumber(o.via.array.ptr[1]);
        if (!ubX || !ubY || *ubX < -1 || *ubY < -1 || *ubX > kMaxDocumentSide ||
            *ubY > kMaxDocumentSide) {
            throw wrong("a plane with upper bounds from -1 to " + std::to_string(kMaxDocumentSide));
        }
        const auto size =
            static_cast<std::uint64_t>(*ubX + 1) * static_cast<std::uint64_t>(*ubY + 1);
        const msgpack::object& bytes = o.via.array.ptr[2];
        if (bytes.type == msgpack::type::EXT) {
            // Bytes that were received straight into memory of their own.
            PlanePayload& payload = payloadOf(bytes.via.ext);
            if (payload.size != size) {
                throw wrong("a plane of (ubX + 1) * (ubY + 1) bytes");
            }
            return Plane::Adopt(static_cast<int>(*ubX), static_cast<int>(*ubY),
                                std::move(payload.bytes));
        }
        if (bytes.type != msgpack::type::BIN || bytes.via.bin.size != size) {
            throw wrong("a plane of (ubX + 1) * (ubY + 1) bytes");
        }
        Plane result = Plane::Uninitialized(static_cast<int>(*ubX), static_cast<int>(*ubY));
        if (size > 0) {
            std::memcpy(result.data(), bytes.via.bin.ptr, size);
        }
        return result;
    }

    PlanePayload& payloadOf(const msgpack::object_ext& ext) const {
        if (ext.type() != kPayloadExtension || ext.size != 2) {
            throw wrong("a plane [ubX, ubY, bytes]");
        }
        const auto* data = reinterpret_cast<const std::uint8_t*>(ext.data());
        const std::size_t index = std::size_t{data[0]} << 8 | data[1];
        if (index >= payloads_.size() || !payloads_[index].bytes) {
            throw wrong("a plane [ubX, ubY, bytes]");
        }
        return payloads_[index];
    }

    std::map<std::string, ParamValue> params(const msgpack::object& o) const {
        if (o.type != msgpack::type::MAP) {
            throw wrong("a map of names to values");
        }
        std::map<std::string, ParamValue> result;
        for (std::uint32_t i = 0; i < o.via.map.size; ++i) {
            auto name = Utf8Text(o.via.map.ptr[i].key);
            auto value = CommandValue(o.via.map.ptr[i].val);
            if (!name || !value) {
                throw wrong(
                    "a map of names to integers, numbers, text, booleans or integer arrays");
            }
            result[std::move(*name)] = std::move(*value);
        }
        return result;
    }

    const std::string& method_;
    const ArgSpec& spec_;
    PlanePayloads& payloads_;
};

}  // namespace

const char* ArgTypeName(ArgType type) {
    switch (type) {
        case ArgType::Integer:
            return "integer";
        case ArgType::Short:
            return "short (-32768..32767)";
        case ArgType::Channel:
            return "byte (0..255)";
        case ArgType::Flag:
            return "boolean (-1 true)";
        case ArgType::Number:
            return "number";
        case ArgType::Single:
            return "single";
        case ArgType::Text:
            return "text";
        case ArgType::Plane:
            return "plane";
        case ArgType::Params:
            return "map";
        case ArgType::Value:
            return "value";
        case ArgType::Integers:
            return "integer array";
    }
    return "value";
}

double CallArgs::number(std::size_t i) const {
    const Value& value = values_.at(i);
    if (const auto* whole = std::get_if<long long>(&value)) {
        return static_cast<double>(*whole);
    }
    return std::get<double>(value);
}

ParamValue CallArgs::value(std::size_t i) const {
    const Value& value = values_.at(i);
    if (const auto* whole = std::get_if<long long>(&value)) {
        return *whole;
    }
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    return std::get<std::string>(value);
}

CallArgs DecodeArgs(const std::string& method, const std::vector<ArgSpec>& specs,
                    const msgpack::object& params, PlanePayloads& payloads) {
    std::size_t required = 0;
    for (const ArgSpec& spec : specs) {
        required += spec.optional ? 0 : 1;
    }
    const std::size_t given = params.via.array.size;
    if (given < required || given > specs.size()) {
        const std::string wanted = required == specs.size() ? std::to_string(required)
                                                            : std::to_string(required) + " to " +
                                                                  std::to_string(specs.size());
        throw BadCall(method + " takes " + wanted + " arguments, not " + std::to_string(given));
    }
    CallArgs args;
    for (std::size_t i = 0; i < given; ++i) {
        args.add(Decoder(method, specs[i], payloads).decode(params.via.array.ptr[i]));
    }
    return args;
}

}  // namespace wib
