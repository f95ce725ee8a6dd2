struct Counter {
    explicit Counter(int start) : value_{start}, steps_(0)
    {
    }
    int operator()(int step)
    {
        value_ += step;
        return value_;
    }
    int value_;
    int steps_;
};

template <typename T, int N = 3>
T times(T x)
{
    return x * N;
}

int run(int limit)
{
    Counter counter(limit);
    auto twice = [&](int x) {
        return counter(x) + counter(x);
    };
    return times(twice(1));
}
