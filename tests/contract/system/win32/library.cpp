// The code of the libraries whose versions are read; a library must have some.
extern "C" int KitbayContractLibrary() { return 1; }
