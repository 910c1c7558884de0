# Sourced by ./check --interop: the Debian packages of the agent and of its peers.

interop_packages=(kamailio kamailio-extra-modules kamailio-presence-modules kamailio-sqlite-modules
  kamailio-utils-modules kamailio-xml-modules libsofia-sip-ua-dev pkg-config sqlite3)
