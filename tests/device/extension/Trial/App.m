// Only there to hold the extensions.
int main(void) { return 0; }
