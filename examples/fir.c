/* A finite impulse response filter, the loop that signal processors are built for. */
#include <stddef.h>

/* Writes `count` outputs; `input` holds `count + taps - 1` samples. */
void fir(const short *input, const short *coefficients, short *output, size_t count, size_t taps)
{
    for (size_t n = 0; n < count; n++) {
        long sum = 1L << 14; /* rounds the 15-bit fraction */

        for (size_t k = 0; k < taps; k++)
            sum += (long)input[n + k] * coefficients[k];

        /* Saturate instead of wrapping round. */
        sum >>= 15;
        if (sum > 32767)
            sum = 32767;
        else if (sum < -32768)
            sum = -32768;
        output[n] = (short)sum;
    }
}
