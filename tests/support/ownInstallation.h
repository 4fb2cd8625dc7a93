// Tests over an installation of their own, with the transforms and the configuration that the build made.
#ifndef TAVRIN_TESTS_SUPPORT_OWN_INSTALLATION_H
#define TAVRIN_TESTS_SUPPORT_OWN_INSTALLATION_H

#include "support/ownPreferences.h"

class OwnInstallationTest : public OwnPreferencesTest
{
protected:
    OwnInstallationTest()
    {
        std::filesystem::remove(systemTransforms());
        std::filesystem::create_directory_symlink(TAVRIN_INSTALLATION "/transforms", systemTransforms());
        std::filesystem::copy_file(TAVRIN_INSTALLATION "/tavrinConfig.xml", configFile());
    }
};

#endif
