#include <stdio.h>

int area(int width, int height);
int name_length(void);

int main(void) {
    puts(GREETING);
    printf("%d %d\n", area(2, 5), name_length());
    return 0;
}
