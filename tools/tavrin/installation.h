// Where the program finds the transforms and the configuration that it was installed with.
#ifndef TAVRIN_PROGRAM_INSTALLATION_H
#define TAVRIN_PROGRAM_INSTALLATION_H

namespace Program
{

// Lets the library look into the folder share/tavrin that was built or installed together with the program, if there is one and the
// environment names no other. To be called before anything uses the library's preferences.
void useOwnInstallation();

} // namespace Program

#endif
