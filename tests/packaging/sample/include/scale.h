#ifndef SCALE_H
#define SCALE_H
#ifdef __cplusplus
extern "C" {
#endif
int area(int width, int height);
int name_length(void);
static inline int scaled(int value) {
    return SCALE * value;
}
#ifdef __cplusplus
}
#endif
#endif
