#pragma once

/// The marks of what each library of this project offers to others; everything else is compiled with hidden visibility.
#define ORV_OFFERED __attribute__((visibility("default")))

#define ORV_ASSERT_EXPORT ORV_OFFERED
#define ORV_ENHANCEMENTS_EXPORT ORV_OFFERED
#define ORV_FOUNDATION_CLASSES_EXPORT ORV_OFFERED
#define ORV_HOST_EXPORT ORV_OFFERED
#define ORV_ID_EXPORT ORV_OFFERED
#define ORV_IFC_VERSION_MAPPING_EXPORT ORV_OFFERED
#define ORV_OBJECT_EXPORT ORV_OFFERED
#define ORV_UTILITIES_EXPORT ORV_OFFERED
#define ORV_XML_EXPORT ORV_OFFERED
