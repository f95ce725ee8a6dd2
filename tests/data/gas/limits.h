/* Code of another file for sample.c to take in. */
static inline int clamp(int value)
{
    if (value > 255)
        return 255;
    return value;
}
