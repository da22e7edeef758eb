/// The name of the class of the application's delegate, for which the library asks.
const char* ClassOfTheDelegate(void);
