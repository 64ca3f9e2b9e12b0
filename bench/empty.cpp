// What a C++ program costs that does nothing.

int main() {}
