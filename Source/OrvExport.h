#pragma once

/// The marks of what each library of this project offers to others; everything else is compiled with hidden visibility.
/// A DLL exports what it offers, and imports what others do: CMake defines OrvName_EXPORTS for the files of OrvName.
#ifdef _WIN32
#define ORV_OFFERED __declspec(dllexport)
#define ORV_TAKEN __declspec(dllimport)
#else
#define ORV_OFFERED __attribute__((visibility("default")))
#define ORV_TAKEN ORV_OFFERED
#endif

#ifdef OrvAssert_EXPORTS
#define ORV_ASSERT_EXPORT ORV_OFFERED
#else
#define ORV_ASSERT_EXPORT ORV_TAKEN
#endif

#ifdef OrvEnhancements_EXPORTS
#define ORV_ENHANCEMENTS_EXPORT ORV_OFFERED
#else
#define ORV_ENHANCEMENTS_EXPORT ORV_TAKEN
#endif

#ifdef OrvFoundationClasses_EXPORTS
#define ORV_FOUNDATION_CLASSES_EXPORT ORV_OFFERED
#else
#define ORV_FOUNDATION_CLASSES_EXPORT ORV_TAKEN
#endif

#ifdef OrvHost_EXPORTS
#define ORV_HOST_EXPORT ORV_OFFERED
#else
#define ORV_HOST_EXPORT ORV_TAKEN
#endif

#ifdef OrvId_EXPORTS
#define ORV_ID_EXPORT ORV_OFFERED
#else
#define ORV_ID_EXPORT ORV_TAKEN
#endif

#ifdef OrvIfcVersionMapping_EXPORTS
#define ORV_IFC_VERSION_MAPPING_EXPORT ORV_OFFERED
#else
#define ORV_IFC_VERSION_MAPPING_EXPORT ORV_TAKEN
#endif

#ifdef OrvObject_EXPORTS
#define ORV_OBJECT_EXPORT ORV_OFFERED
#else
#define ORV_OBJECT_EXPORT ORV_TAKEN
#endif

#ifdef OrvUtilities_EXPORTS
#define ORV_UTILITIES_EXPORT ORV_OFFERED
#else
#define ORV_UTILITIES_EXPORT ORV_TAKEN
#endif

#ifdef OrvXml_EXPORTS
#define ORV_XML_EXPORT ORV_OFFERED
#else
#define ORV_XML_EXPORT ORV_TAKEN
#endif
