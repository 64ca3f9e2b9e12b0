// A program that is its own service.

extern "C" int Bootstrap(int argc, char** argv);

int main(int argc, char** argv) { return Bootstrap(argc, argv); }
