// The MD5 message-digest algorithm, as RFC 1321 gives it.
#include "assembly/md5.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace assembly {

static constexpr std::size_t block_size = 64;

// floor(2^32 * abs(sin(i + 1)))
static constexpr std::array<std::uint32_t, block_size> sines = {
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391,
};
static constexpr std::array<std::array<int, 4>, 4> rotations = {
    {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}}};

using digest = std::array<std::uint32_t, 4>;

static std::uint32_t word_at(const char* bytes) {
    std::uint32_t word = 0;
    for (unsigned i = 0; i < sizeof word; ++i) {
        word |= std::uint32_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    }
    return word;
}

static void add_block(digest& sum, const char* block) {
    auto [a, b, c, d] = sum;
    for (std::size_t i = 0; i < block_size; ++i) {
        const std::size_t round = i / 16;
        std::uint32_t mixed = 0;
        std::size_t word = 0;
        switch (round) {
            case 0:
                mixed = (b & c) | (~b & d);
                word = i;
                break;
            case 1:
                mixed = (d & b) | (~d & c);
                word = 5 * i + 1;
                break;
            case 2:
                mixed = b ^ c ^ d;
                word = 3 * i + 5;
                break;
            default:
                mixed = c ^ (b | ~d);
                word = 7 * i;
                break;
        }
        mixed += a + sines[i] + word_at(block + word % 16 * 4);
        a = d;
        d = c;
        c = b;
        b += std::rotl(mixed, rotations[round][i % 4]);
    }
    sum = {sum[0] + a, sum[1] + b, sum[2] + c, sum[3] + d};
}

std::string md5_of(std::string_view text) {
    digest sum = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    const std::uint64_t bits = std::uint64_t{text.size()} * 8;
    for (; text.size() >= block_size; text.remove_prefix(block_size)) {
        add_block(sum, text.data());
    }
    // The rest, a bit of 1, and the length at the end of a block.
    std::array<char, 2 * block_size> rest{};
    std::copy(text.begin(), text.end(), rest.begin());
    rest[text.size()] = '\x80';
    const std::size_t rest_size = text.size() + 9 <= block_size ? block_size : 2 * block_size;
    for (std::size_t i = 0; i < 8; ++i) {
        rest[rest_size - 8 + i] = static_cast<char>(bits >> (8 * i));
    }
    for (std::size_t at = 0; at < rest_size; at += block_size) {
        add_block(sum, rest.data() + at);
    }
    std::string digits;
    for (const std::uint32_t word : sum) {
        for (unsigned i = 0; i < 8; ++i) {
            digits += "0123456789abcdef"[word >> (8 * (i / 2) + (i % 2 == 0 ? 4 : 0)) & 0xf];
        }
    }
    return digits;
}

}  // namespace assembly
