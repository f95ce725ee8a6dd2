static_assert(__cplusplus == 201703L && OF_THE_SOURCE == 2);
#ifdef __GXX_RTTI
#error "not compiled as the target is"
#endif

int first(const std::vector<int>& values) {
    return values.front();
}
