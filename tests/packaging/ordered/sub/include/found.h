#define FOUND 4
