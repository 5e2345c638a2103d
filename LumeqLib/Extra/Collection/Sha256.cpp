#include "LumeqLib/Extra/Collection/Sha256.h"

#include <algorithm>
#include <bit>

namespace Zuvan::Lumeq::Extra::Collection {

namespace {

constexpr std::array<std::uint32_t, 8> StartState = {
    0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19,
};

constexpr std::array<std::uint32_t, 64> RoundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2,
};

using Block = std::span<const std::uint8_t, Sha256BlockSize>;

std::uint32_t ReadWord(const std::uint8_t* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
           std::uint32_t{bytes[3]};
}

void WriteWord(std::uint8_t* bytes, std::uint32_t word) {
    for (int i = 0; i < 4; ++i)
        bytes[i] = static_cast<std::uint8_t>(word >> (24 - 8 * i));
}

std::array<std::uint32_t, 64> MessageSchedule(Block block) {
    std::array<std::uint32_t, 64> w;
    for (std::size_t i = 0; i < 16; ++i)
        w[i] = ReadWord(&block[4 * i]);
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t s0 = std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
        const std::uint32_t s1 = std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + s0 + w[i - 7] + s1;
    }
    return w;
}

void ProcessBlock(sha256_ctx& context, Block block) {
    const std::array<std::uint32_t, 64> w = MessageSchedule(block);
    auto [a, b, c, d, e, f, g, h] = context.state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t s1 = std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25);
        const std::uint32_t choice = (e & f) ^ (~e & g);
        const std::uint32_t t1 = h + s1 + choice + RoundConstants[i] + w[i];
        const std::uint32_t s0 = std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22);
        const std::uint32_t majority = (a & b) ^ (a & c) ^ (b & c);
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + s0 + majority;
    }
    const std::array<std::uint32_t, 8> added = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < added.size(); ++i)
        context.state[i] += added[i];
}

void ProcessPendingBlocks(sha256_ctx& context, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        ProcessBlock(context, Block(context.block.data() + i * Sha256BlockSize, Sha256BlockSize));
}

/// Moves as many bytes from the front of `bytes` into the block as fit.
void FillBlock(sha256_ctx& context, std::span<const std::uint8_t>& bytes) {
    const std::size_t count = std::min(bytes.size(), Sha256BlockSize - context.pendingLength);
    std::copy_n(bytes.begin(), count, context.block.begin() + context.pendingLength);
    context.pendingLength += static_cast<std::uint32_t>(count);
    bytes = bytes.subspan(count);
}

} // namespace

void Sha256Init(sha256_ctx& context) {
    context.totalLength = 0;
    context.pendingLength = 0;
    context.state = StartState;
}

void Sha256Update(sha256_ctx& context, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        FillBlock(context, bytes);
        if (context.pendingLength < Sha256BlockSize)
            return;
        ProcessPendingBlocks(context, 1);
        context.totalLength += Sha256BlockSize;
        context.pendingLength = 0;
    }
}

void Sha256Final(sha256_ctx& context, Sha256Digest& digest) {
    const std::array<std::uint8_t, 8> length = Sha256LengthField(context.totalLength + context.pendingLength);
    const bool lengthFits = context.pendingLength + 1 + length.size() <= Sha256BlockSize;
    const std::size_t blocks = lengthFits ? 1 : 2;
    const auto end = context.block.begin() + static_cast<std::ptrdiff_t>(blocks * Sha256BlockSize);

    const auto padding = context.block.begin() + context.pendingLength;
    *padding = 0x80;
    std::fill(padding + 1, end, std::uint8_t{0});
    std::copy(length.begin(), length.end(), end - static_cast<std::ptrdiff_t>(length.size()));
    ProcessPendingBlocks(context, blocks);

    for (std::size_t i = 0; i < context.state.size(); ++i)
        WriteWord(&digest[4 * i], context.state[i]);
}

void Sha256Hash(std::span<const std::uint8_t> bytes, Sha256Digest& digest) {
    sha256_ctx context;
    Sha256Init(context);
    Sha256Update(context, bytes);
    Sha256Final(context, digest);
}

std::array<std::uint8_t, 8> Sha256LengthField(std::uint32_t byteCount) {
    std::array<std::uint8_t, 8> field{};
    WriteWord(&field[4], byteCount * 8);
    return field;
}

} // namespace Zuvan::Lumeq::Extra::Collection
