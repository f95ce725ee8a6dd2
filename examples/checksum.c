/* CRC-32 with a table that is filled on first use, and a string hash. */
#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>

#define POLYNOMIAL 0xedb88320u

static uint32_t table[256];

static uint32_t table_entry(uint32_t value)
{
    for (int bit = 0; bit < 8; bit++)
        value = value & 1 ? value >> 1 ^ POLYNOMIAL : value >> 1;
    return value;
}

uint32_t crc32(uint32_t crc, const unsigned char *data, size_t size)
{
    /* No table entry but the first is zero. */
    if (table[1] == 0) {
        for (uint32_t i = 0; i < 256; i++)
            table[i] = table_entry(i);
    }

    if (data == NULL)
        abort(); /* compilers move this out of the way */

    crc = ~crc;
    while (size-- > 0)
        crc = table[(crc ^ *data++) & 0xff] ^ crc >> 8;
    return ~crc;
}

uint32_t hash(const char *text)
{
    uint32_t value = 2166136261u;

    for (; *text != '\0'; text++) {
        value ^= (unsigned char)*text;
        value *= 16777619u;
    }
    return value;
}
