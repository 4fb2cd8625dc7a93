// The names of elements in a catalog, and in the information by which catalogs find transforms.
#ifndef TAVRIN_XML_CATALOG_VOCABULARY_H
#define TAVRIN_XML_CATALOG_VOCABULARY_H

namespace Color::Xml
{

inline constexpr char TAG_CATALOG[] = "Catalog";
inline constexpr char TAG_CATALOG_ITEM[] = "CatalogItem";
inline constexpr char TAG_CATALOG_TRANSFORM_PATH[] = "CatalogTransformPath";
inline constexpr char TAG_CATALOG_TRANSFORM[] = "CatalogTransform";

} // namespace Color::Xml

#endif
