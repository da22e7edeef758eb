// Only there to hold the extension.
int main(void) { return 0; }
