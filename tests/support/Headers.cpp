// The program that the precompiled headers of all test programs belong to; it does nothing.
int main() {}
