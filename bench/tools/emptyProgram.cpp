// What starting costs before a program does anything.
int main() {
    return 0;
}
