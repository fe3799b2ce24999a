// Linked statically: the dynamic linker has no part in it.
int main() {}
