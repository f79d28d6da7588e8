#include "CliCommands.h"

int main(int argc, char** argv) { return RunCli(argc, argv); }
