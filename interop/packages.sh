# Sourced by ./check --interop: the Debian packages of the agent and of its peers.

interop_packages=(kamailio kamailio-presence-modules kamailio-sqlite-modules libsofia-sip-ua-dev pkg-config
  sip-tester sqlite3)
