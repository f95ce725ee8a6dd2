/* How far it is from stop to stop along a line. */
static int distance(int from, int to)
{
    return from < to ? to - from : from - to;
}

int walk(const int *stops, int count)
{
    int sum = 0;
    for (int i = 1; i < count; i++)
        sum += distance(stops[i - 1], stops[i]);
    return sum;
}
