struct pair {
    int first;
    int second;
};
static inline int twice(int x) {
    return x * 19;
}
static inline int sum(const struct pair* p) {
    return twice(p->first)
        + p->second;
}
