// An extension that is none: it ends before it has heard of any request.
int main(void) { return 3; }
