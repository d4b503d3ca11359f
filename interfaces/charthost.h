// The address below which every namespace and schema of the system lies.
#ifndef CHARTXML_CHARTHOST_H
#define CHARTXML_CHARTHOST_H

// Scheme and host of every URI of the system.
#define CHARTXML_HOST "http://xml.tavo.example"

// The namespace of data documents, and where its schema is, as `xsi:schemaLocation` tells it.
#define CHARTXML_DATA_SCHEMA_LOCATION \
  CHARTXML_HOST "/tavo/visualization " CHARTXML_HOST "/tavo/visualization/grafo-data-2.1.xsd"

#endif
