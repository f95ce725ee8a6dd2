/* What compilers turn into odd assembly: computed gotos, inline assembly, parts of a
   function that go elsewhere, names that are not plain, tables, lines from other files. */

#ifdef __clang__
#define NAMED(name) __asm__(name)
#else
#define NAMED(name) __asm__("\"" name "\"") /* written as it stands, quotes and all */
#endif

typedef unsigned int word;

extern void report(const char* what, int count) __attribute__((cold, noreturn));
extern int next(void);

#if defined(__ELF__) && !(defined(__clang__) && (defined(__riscv) || defined(__powerpc__)))
/* There Clang does not read what it writes. */
#define HAS_BLANKS
/* GCC would write a blank in the name of a section, which no assembler takes. */
#define IN_ONE_SECTION __attribute__((section(".named")))
int with_blank(int n) NAMED("a name with blanks") IN_ONE_SECTION;
int with_letters(int n) NAMED("gr\303\266\303\237e") IN_ONE_SECTION;
#endif

static const char* const names[] = {"zero", "one", "two", "three", 0};
static word counters[8];

static inline int square(int n) {
    return n * n;
}

static inline int cube(int n) {
    return square(n)
        * n;
}

#define TWICE(n) \
    (square(n) + \
     square((n) + 1))

/* A machine of threaded code. */
int interpret(const unsigned char* code, int value) {
    static const void* const steps[] = {&&add, &&multiply, &&negate, &&stop, &&skip};
    goto* steps[*code++ % 5];
add:
    value += *code++;
    goto* steps[*code++ % 5];
multiply:
    value = cube(value) - TWICE(value);
    goto* steps[*code++ % 5];
negate:
    value = -value;
    goto* steps[*code++ % 5];
skip:
    ++code;
    goto* steps[*code++ % 5];
stop:
    return value;
}

/* Goes through a table, and holds a loop and calls. */
int classify(int kind, const int* values, int count) {
    int sum = 0;
    switch (kind) {
        case 0: return names[0][count & 3];
        case 1: sum = 17; break;
        case 2: sum = next(); break;
        case 3: sum = -next(); break;
        case 4: sum = cube(next()); break;
        case 5: sum = TWICE(count); break;
        case 6: counters[count & 7] += 3; break;
        case 9: return 99;
        default: report(names[kind & 3], kind);
    }
    for (int i = 0; i < count; ++i) {
        sum += square(values[i]);
        if (__builtin_expect(sum < 0, 0)) {
            report("negative", i);
        }
    }
    return sum;
}

/* The part for what hardly ever comes goes to a section of its own. */
int seldom(int* values, int count) {
    for (int i = 0; i < count; ++i) {
        if (__builtin_expect(values[i] == 77, 0)) {
            counters[0] += (word)cube(i);
            counters[1] ^= (word)TWICE(i);
            report("found", values[i]);
        }
        values[i] = square(values[i] + 1);
    }
    return count;
}

/* Inline assembly of one line, of several, with data and sections of its own, empty. */
int assembly(int n) {
    __asm__ volatile("nop");
    n += 3;
    __asm__ volatile("" ::: "memory");
    __asm__ volatile("nop\n\tnop\n1:\tnop\n\n\tnop" : "+r"(n));
#ifdef __ELF__
    __asm__ volatile(
        ".pushsection .data\n"
        "\t.byte 1, 2, 3, 4\n"
        "\t.popsection\n"
        "\tnop" ::: "memory");
#endif
    return square(n);
}

__asm__(
    "\t.data\n"
    "from_top_level:\n"
    "\t.byte 7\n"
    "\t.text");

/* Other sections between a line and its own code. */
#ifdef __ELF__
void noted_first(void) {
    __asm__ volatile(".pushsection .noted\n\t.long 1\n\t.popsection\n\tnop");
}

void noted_behind_data(void) {
    next();
    __asm__ volatile(".byte 0, 0, 0, 0\n\t.pushsection .noted\n\t.popsection\n\tnop");
    next();
}
#endif

#ifdef HAS_BLANKS
int with_blank(int n) {
    return with_letters(n) + 1;
}

int with_letters(int n) {
    return n > 3 ? with_blank(n / 2) : cube(n);
}
#endif

#line 9 "a folder/gr\303\266\303\237e of 12.y"
int from_a_generator(int n) {
#line 1 "12 34"
    int m = cube(n);
#line 4000000 "far.y"
    m += next();
#line 10 "a folder/gr\303\266\303\237e of 12.y"
    return m;
}
