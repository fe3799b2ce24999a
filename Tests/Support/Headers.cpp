// Nothing but the precompiled headers.
int main() {}
