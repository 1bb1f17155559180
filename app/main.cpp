#include "app/CommandLine.h"

int main(int argc, char** argv) { return FendaMaestros::runCommandLine(argc, argv); }
