#include "limits.h"

void fail(int code) __attribute__((cold, noreturn));

static int square(int x)
{
    return x * x;
}

/* Sums the squares of the values. */
int
sum(const int *values,
    int count)
{
    int total = 0;

    if (count < 0)
        fail(count);

    /* the loop */
    for (int i = 0; i < count; i++)
        total += square(values[i]);

    return clamp(total);
}

int first(void) { return 1; } int second(void) { return 2; }

#ifdef WIDE
long widen(int x) {
#else
int widen(int x) {
#endif
    return x + 1;
}
