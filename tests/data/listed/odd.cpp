// What C++ compilers turn into odd assembly: templates inlined into each other, landing
// pads, code in sections of its own, tables of virtual functions, lambdas, coroutines.
#include <algorithm>
#include <coroutine>
#include <memory>
#include <vector>

namespace shapes {

struct shape {
    virtual ~shape() = default;
    virtual double area() const = 0;
    const char* name = "shape";
};

struct square final : shape {
    explicit square(double side_length) : side(side_length) { name = "square"; }
    double area() const override { return side * side; }
    double side;
};

template <class Number>
struct pair {
    Number first, second;
    Number sum() const { return first + second; }
    friend bool operator<(const pair& one, const pair& other) { return one.sum() < other.sum(); }
};

template <class Range, class Function>
auto total(const Range& range, Function of) {
    decltype(of(*range.begin())) sum{};
    for (const auto& it : range) {
        sum += of(it);
    }
    return sum;
}

double area_of(const std::vector<std::unique_ptr<shape>>& all) {
    return total(all, [](const auto& it) {
        return it->area() * (it->name[0] == 's' ? 1 : 2);
    });
}

std::vector<std::unique_ptr<shape>> squares(int count) {
    std::vector<std::unique_ptr<shape>> all;
    for (int i = 0; i < count; ++i) {
        all.push_back(std::make_unique<square>(i));
    }
    return all;
}

}  // namespace shapes

int largest(std::vector<shapes::pair<int>>& pairs) {
    std::sort(pairs.begin(), pairs.end());
    return pairs.empty() ? 0 : pairs.back().sum();
}

int keep(std::vector<std::unique_ptr<int>>& all, int from) {
    try {
        all.push_back(std::make_unique<int>(from));
        all.insert(all.begin(), std::make_unique<int>(-from));
    } catch (const std::bad_alloc&) {
        return -1;
    }
    return std::count_if(all.begin(), all.end(), [&](const auto& it) { return *it == from; });
}

// Made in vain where its constructor throws: what is left to do then stands elsewhere.
struct throwing {
    explicit throwing(int from);
    int values[9];
};

throwing* make_throwing(bool is_first) {
    return is_first ? new throwing(1) : new throwing(2);
}

struct numbers {
    struct promise_type {
        int value = 0;
        numbers get_return_object() {
            return {std::coroutine_handle<promise_type>::from_promise(*this)};
        }
        std::suspend_always initial_suspend() { return {}; }
        std::suspend_always final_suspend() noexcept { return {}; }
        std::suspend_always yield_value(int next) {
            value = next;
            return {};
        }
        void return_void() {}
        void unhandled_exception() { throw; }
    };
    std::coroutine_handle<promise_type> handle;
};

#if !defined(__clang__)
numbers up_to(int count) {
    for (int i = 0; i < count; ++i) {
        co_yield i * i;
    }
}
#endif

thread_local int per_thread;

#if defined(__clang__) && defined(__powerpc__)
#define gr\u00f6\u00dfe size // there Clang does not read what it writes
#endif

int gr\u00f6\u00dfe(int n) {
    static const std::vector<int> kept(static_cast<std::size_t>(n), 3);
    return static_cast<int>(kept.size()) + ++per_thread;
}
