#include "OSGManyFieldsStatics.inl"
