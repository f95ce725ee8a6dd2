static int square(int x) {
    return x * x;
}

static int sum_of_squares(int a, int b) {
    return square(a)
        + square(b);
}

int outer(int a, int b, int* result) {
    *result = a;
    return sum_of_squares(a, b) - 7;
}
