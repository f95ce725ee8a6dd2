auto of_odd() {
    return 5;
}
