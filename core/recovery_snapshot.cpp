// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/recovery_snapshot.h"

#include <zlib.h>

#include <cstring>

#include "core/byte_fields.h"
#include "core/document_limits.h"

namespace wib {

namespace {

constexpr char kSignature[8] = {'W', 'I', 'B', 'S', 'N', 'A', 'P', '1'};
// Bounds of a plane in a snapshot: a document side plus its spare column.
constexpr std::int64_t kMaxBound = kMaxDocumentSide + 1;
constexpr std::uint32_t kMaxEntries = 1u << 24;

}  // namespace

const Plane* RecoverySnapshot::plane(const std::string& name) const {
    for (const auto& [planeName, value] : planes) {
        if (planeName == name) {
            return &value;
        }
    }
    return nullptr;
}

std::string RecoverySnapshot::text(const std::string& name) const {
    const auto found = texts.find(name);
    return found == texts.end() ? std::string() : found->second;
}

std::vector<std::uint8_t> EncodeSnapshot(const RecoverySnapshot& snapshot) {
    std::vector<std::uint8_t> out(std::begin(kSignature), std::end(kSignature));
    PutU32(out, static_cast<std::uint32_t>(snapshot.texts.size()));
    for (const auto& [name, value] : snapshot.texts) {
        PutText(out, name);
        PutText(out, value);
    }
    PutU32(out, static_cast<std::uint32_t>(snapshot.planes.size()));
    for (const auto& [name, plane] : snapshot.planes) {
        PutText(out, name);
        PutU32(out, static_cast<std::uint32_t>(plane.ubX()));
        PutU32(out, static_cast<std::uint32_t>(plane.ubY()));
        uLongf packed = compressBound(static_cast<uLong>(plane.byteCount()));
        const std::size_t sizeAt = out.size();
        PutU64(out, 0);
        const std::size_t dataAt = out.size();
        out.resize(dataAt + packed);
        // Level 1: the snapshot must be written quickly, not small.
        compress2(out.data() + dataAt, &packed, plane.data(), static_cast<uLong>(plane.byteCount()),
                  1);
        out.resize(dataAt + packed);
        for (int i = 0; i < 8; ++i) {
            out[sizeAt + static_cast<std::size_t>(i)] =
                static_cast<std::uint8_t>(static_cast<std::uint64_t>(packed) >> (8 * i));
        }
    }
    return out;
}

std::optional<RecoverySnapshot> DecodeSnapshot(std::span<const std::uint8_t> bytes,
                                               std::string& error) {
    if (bytes.size() < sizeof kSignature ||
        std::memcmp(bytes.data(), kSignature, sizeof kSignature) != 0) {
        error = "not a recovery snapshot";
        return std::nullopt;
    }
    ByteFieldReader reader(bytes.subspan(sizeof kSignature));
    RecoverySnapshot snapshot;
    error = "the snapshot is cut short";
    std::uint32_t count = 0;
    if (!reader.u32(count) || count > kMaxEntries) {
        return std::nullopt;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        std::string name, value;
        if (!reader.text(name) || !reader.text(value)) {
            return std::nullopt;
        }
        snapshot.texts[name] = value;
    }
    if (!reader.u32(count) || count > kMaxEntries) {
        return std::nullopt;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        std::string name;
        std::uint32_t ubX = 0, ubY = 0;
        std::uint64_t packed = 0;
        if (!reader.text(name) || !reader.u32(ubX) || !reader.u32(ubY) || !reader.u64(packed) ||
            packed > reader.left()) {
            return std::nullopt;
        }
        const auto signedX = static_cast<std::int32_t>(ubX);
        const auto signedY = static_cast<std::int32_t>(ubY);
        if (signedX < -1 || signedY < -1 || signedX > kMaxBound || signedY > kMaxBound) {
            error = "a plane of the snapshot is larger than any document";
            return std::nullopt;
        }
        Plane plane = Plane::Uninitialized(signedX, signedY);
        uLongf size = static_cast<uLongf>(plane.byteCount());
        const auto source = reader.take(static_cast<std::size_t>(packed));
        if (size > 0 && (uncompress(plane.data(), &size, source.data(), source.size()) != Z_OK ||
                         size != plane.byteCount())) {
            error = "a plane of the snapshot is damaged";
            return std::nullopt;
        }
        snapshot.planes.emplace_back(std::move(name), std::move(plane));
    }
    error.clear();
    return snapshot;
}

}  // namespace wib
