// The Wi-Fi Protected Setup attributes as one table. Each row states the type, the parser's name,
// how the value is read, the accepted lengths, and the property that stores the value, with its
// label in descriptions. Code for all attributes is generated from this table.
//
// An attribute is a 16-bit type, a 16-bit length, both big-endian, and that many value bytes. Types
// and layouts: Wi-Fi Simple Configuration, "Data Element Definitions". The accepted lengths are
// this library's own rule: Network Key (at most 1 byte) is stricter, and Message Type (none or 1)
// less strict, than defined there.
//
// A file that includes this header defines what each row becomes:
//
//   HALVANE_WPS_PROPERTY(type, parser, kind, shortest, longest length, property, setter, label)
//       an attribute with a property of its own
//   HALVANE_WPS_PARSER_ONLY(type, parser, kind, shortest, longest length, property)
//       an attribute that is stored in the property of another
//
// The header undefines both macros and has no guard: it may be included repeatedly. Rows of an
// undefined macro become nothing. The rows are in the order of descriptions, which is that of the
// types, except for the encryption rows.

// IWYU pragma: no_include "halvane/ie/wps_attributes.h"
#ifndef HALVANE_WPS_PROPERTY
#define HALVANE_WPS_PROPERTY(...)
#endif
#ifndef HALVANE_WPS_PARSER_ONLY
// The rows become nothing.
#define HALVANE_WPS_PARSER_ONLY(...)
#endif

// One row per line, however wide, so that the columns can be checked by eye.
// clang-format off
HALVANE_WPS_PROPERTY(0x1001,     APChannel,                      Integer,   2,       2, apChannel,                      setApChannel,                      "AP Channel")
HALVANE_WPS_PROPERTY(0x1002,     AssociationState,               Integer,   2,       2, associationState,               setAssociationState,               "AssociationState")
HALVANE_WPS_PROPERTY(0x1003,     AuthenticationType,             Integer,   2,       2, authenticationType,             setAuthenticationType,             "AuthenticationType")
HALVANE_WPS_PROPERTY(0x1004,     AuthenticationTypeFlags,        Integer,   2,       2, authenticationTypeFlags,        setAuthenticationTypeFlags,        "Authentication Type Flags")
HALVANE_WPS_PROPERTY(0x1005,     Authenticator,                  Bytes,     8,       8, authenticator,                  setAuthenticator,                  "Authenticator")
HALVANE_WPS_PROPERTY(0x1008,     ConfigMethods,                  Integer,   2,       2, configMethods,                  setConfigMethods,                  "Config Methods")
HALVANE_WPS_PROPERTY(0x1009,     ConfigurationError,             Integer,   2,       2, configurationError,             setConfigurationError,             "Configuration Error")
HALVANE_WPS_PROPERTY(0x100A,     ConfirmationURL4,               Bytes,     0,      64, confirmationURL4,               setConfirmationURL4,               "Confirmation URL4")
HALVANE_WPS_PROPERTY(0x100B,     ConfirmationURL6,               Bytes,     0,      76, confirmationURL6,               setConfirmationURL6,               "Confirmation URL6")
HALVANE_WPS_PROPERTY(0x100C,     ConnectionType,                 Integer,   1,       1, connectionType,                 setConnectionType,                 "Connection Type")
HALVANE_WPS_PROPERTY(0x100D,     ConnectionTypeFlags,            Integer,   1,       1, connectionTypeFlags,            setConnectionTypeFlags,            "Connection Type Flags")
HALVANE_WPS_PROPERTY(0x100E,     Credential,                     Bytes,     0, kWPSAny, credential,                     setCredential,                     "Credential")
HALVANE_WPS_PROPERTY(0x1011,     DeviceName,                     Bytes,     0,      32, deviceName,                     setDeviceName,                     "Device Name")
HALVANE_WPS_PROPERTY(0x1012,     DevicePasswordID,               Integer,   2,       2, devicePasswordID,               setDevicePasswordID,               "Device Password ID")
HALVANE_WPS_PROPERTY(0x1014,     EHash1,                         Bytes,    32,      32, enrolleeHash1,                  setEnrolleeHash1,                  "Enrollee Hash 1")
HALVANE_WPS_PROPERTY(0x1015,     EHash2,                         Bytes,    32,      32, enrolleeHash2,                  setEnrolleeHash2,                  "Enrollee Hash 2")
HALVANE_WPS_PROPERTY(0x1016,     ESNonce1,                       Bytes,    16,      16, enrolleeSNonce1,                setEnrolleeSNonce1,                "Enrollee SNonce 1")
HALVANE_WPS_PROPERTY(0x1017,     ESNonce2,                       Bytes,    16,      16, enrolleeSNonce2,                setEnrolleeSNonce2,                "Enrollee SNonce 2")
HALVANE_WPS_PROPERTY(0x1018,     EncryptedSettings,              Bytes,     0, kWPSAny, encryptedSettings,              setEncryptedSettings,              "Encrypted Settings")
HALVANE_WPS_PROPERTY(0x100F,     EncryptionType,                 Integer,   2,       2, encryptionType,                 setEncryptionType,                 "Encryption Type")
HALVANE_WPS_PROPERTY(0x1010,     EncryptionTypeFlags,            Integer,   2,       2, encryptionTypeFlags,            setEncryptionTypeFlags,            "Encryption Type Flags")
HALVANE_WPS_PROPERTY(0x101A,     EnrolleeNonce,                  Bytes,    16,      16, enrolleeNonce,                  setEnrolleeNonce,                  "Enrollee Nonce")
HALVANE_WPS_PROPERTY(0x101B,     FeatureID,                      Integer,   4,       4, featureID,                      setFeatureID,                      "Feature ID")
HALVANE_WPS_PROPERTY(0x101C,     Identity,                       Bytes,     0,      80, identity,                       setIdentity,                       "Identity")
HALVANE_WPS_PROPERTY(0x101D,     IdentityProof,                  Bytes,     0, kWPSAny, identityProof,                  setIdentityProof,                  "Identity Proof")
HALVANE_WPS_PROPERTY(0x101E,     KeyWrapAuthenticator,           Bytes,     8,       8, keyWrapAuthenticator,           setKeyWrapAuthenticator,           "Key Wrap Authenticator")
HALVANE_WPS_PROPERTY(0x101F,     KeyIdentifier,                  Bytes,    16,      16, keyIdentifier,                  setKeyIdentifier,                  "Key Identifier")
HALVANE_WPS_PROPERTY(0x1020,     MACAddress,                     Bytes,     6,       6, MACAddress,                     setMACAddress,                     "MAC Address")
HALVANE_WPS_PROPERTY(0x1021,     Manufacturer,                   Bytes,     0,      64, manufacturer,                   setManufacturer,                   "Manufacturer")
HALVANE_WPS_PROPERTY(0x1022,     MessageType,                    Integer,   0,       1, messageType,                    setMessageType,                    "Message Type")
HALVANE_WPS_PROPERTY(0x1023,     ModelName,                      Bytes,     0,      32, modelName,                      setModelName,                      "Model Name")
HALVANE_WPS_PROPERTY(0x1024,     ModelNumber,                    Bytes,     0,      32, modelNumber,                    setModelNumber,                    "Model Number")
HALVANE_WPS_PROPERTY(0x1026,     NetworkIndex,                   Integer,   1,       1, networkIndex,                   setNetworkIndex,                   "Network Index")
HALVANE_WPS_PROPERTY(0x1027,     NetworkKey,                     Bytes,     0,       1, networkKey,                     setNetworkKey,                     "Network Key")
HALVANE_WPS_PROPERTY(0x1028,     NetworkKeyIndex,                Integer,   1,       1, networkKeyIndex,                setNetworkKeyIndex,                "Network Key Index")
HALVANE_WPS_PROPERTY(0x1029,     NewDeviceName,                  Bytes,     0,      32, updatedDeviceName,              setUpdatedDeviceName,              "New Device Name")
HALVANE_WPS_PROPERTY(0x102A,     NewPassword,                    Bytes,     0,      64, updatedPassword,                setUpdatedPassword,                "New Password")
HALVANE_WPS_PROPERTY(0x102C,     OOBDevicePassword,              Bytes,     0,      58, oobDevicePassword,              setOobDevicePassword,              "OOB Device Password")
HALVANE_WPS_PROPERTY(0x102D,     OSVersion,                      Integer,   4,       4, osVersion,                      setOsVersion,                      "OS Version")
HALVANE_WPS_PROPERTY(0x102F,     PowerLevel,                     Integer,   1,       1, powerLevel,                     setPowerLevel,                     "Power Level")
HALVANE_WPS_PROPERTY(0x1030,     PSKCurrent,                     Integer,   1,       1, pskCurrent,                     setPskCurrent,                     "PSK Current")
HALVANE_WPS_PROPERTY(0x1031,     PSKMax,                         Integer,   1,       1, pskMax,                         setPskMax,                         "PSK Max")
HALVANE_WPS_PROPERTY(0x1032,     PublicKey,                      Bytes,   192,     192, publicKey,                      setPublicKey,                      "Public Key")
HALVANE_WPS_PROPERTY(0x1033,     RadioEnabled,                   Integer,   1,       1, radioEnabled,                   setRadioEnabled,                   "Radio Enabled")
HALVANE_WPS_PROPERTY(0x1034,     Reboot,                         Integer,   1,       1, rebootRequest,                  setRebootRequest,                  "Reboot Request")
HALVANE_WPS_PROPERTY(0x1035,     RegistrarCurrent,               Integer,   1,       1, registrarCurrent,               setRegistrarCurrent,               "Registrar Current")
HALVANE_WPS_PROPERTY(0x1036,     RegistrarEstablished,           Integer,   1,       1, registrarEstablished,           setRegistrarEstablished,           "Registrar Established")
HALVANE_WPS_PROPERTY(0x1037,     RegistrarList,                  Bytes,     0,     512, registrarList,                  setRegistrarList,                  "Registrar List")
HALVANE_WPS_PROPERTY(0x1038,     RegistrarMax,                   Integer,   1,       1, registrarMax,                   setRegistrarMax,                   "Registrar Max")
HALVANE_WPS_PROPERTY(0x1039,     RegistrarNonce,                 Bytes,    16,      16, registrarNonce,                 setRegistrarNonce,                 "Registrar Nonce")
HALVANE_WPS_PROPERTY(0x103A,     RequestType,                    Integer,   1,       1, requestType,                    setRequestType,                    "Request Type")
HALVANE_WPS_PROPERTY(0x103B,     ResponseType,                   Integer,   1,       1, responseType,                   setResponseType,                   "Response Type")
HALVANE_WPS_PROPERTY(0x103C,     RFBands,                        Integer,   1,       1, rfBands,                        setRfBands,                        "RF Bands")
HALVANE_WPS_PROPERTY(0x103D,     RHash1,                         Bytes,    32,      32, registrarHash1,                 setRegistrarHash1,                 "Registrar Hash 1")
HALVANE_WPS_PROPERTY(0x103E,     RHash2,                         Bytes,    32,      32, registrarHash2,                 setRegistrarHash2,                 "Registrar Hash 2")
HALVANE_WPS_PROPERTY(0x103F,     RSNonce1,                       Bytes,    16,      16, registrarSNonce1,               setRegistrarSNonce1,               "Registrar SNonce 1")
HALVANE_WPS_PROPERTY(0x1040,     RSNonce2,                       Bytes,    16,      16, registrarSNonce2,               setRegistrarSNonce2,               "Registrar SNonce 2")
HALVANE_WPS_PROPERTY(0x1041,     SelectedRegistrar,              Integer,   1,       1, selectedRegistrar,              setSelectedRegistrar,              "Selected Registrar")
HALVANE_WPS_PROPERTY(0x1042,     SerialNumber,                   Bytes,     0,      32, serialNumber,                   setSerialNumber,                   "Serial Number")
HALVANE_WPS_PROPERTY(0x1044,     WiFiProtectedSetupState,        Integer,   1,       1, wpsSetupState,                  setWpsSetupState,                  "WPS Setup State")
HALVANE_WPS_PROPERTY(0x1045,     SSID,                           Bytes,     0,      32, ssid,                           setSsid,                           "SSID")
HALVANE_WPS_PROPERTY(0x1046,     TotalNetworks,                  Integer,   1,       1, totalNetworks,                  setTotalNetworks,                  "Total Networks")
HALVANE_WPS_PROPERTY(0x1047,     UUIDE,                          Bytes,    16,      16, enrolleeUUID,                   setEnrolleeUUID,                   "Enrollee UUID")
HALVANE_WPS_PROPERTY(0x1048,     UUIDR,                          Bytes,    16,      16, registrarUUID,                  setRegistrarUUID,                  "Registrar UUID")
HALVANE_WPS_PROPERTY(0x1049,     VendorExtension,                Vendor,    0,    1024, vendorExtensions,               setVendorExtensions,               "Vendor Extensions")
HALVANE_WPS_PROPERTY(0x104A,     Version,                        Version,   1,       1, version,                        setVersion,                        "Version")
HALVANE_WPS_PROPERTY(0x104B,     X509CertificateRequest,         Bytes,     0, kWPSAny, x509CertificateRequest,         setX509CertificateRequest,         "X509 Certificate Request")
HALVANE_WPS_PROPERTY(0x104C,     X509Certificate,                Bytes,     0, kWPSAny, x509Certificate,                setX509Certificate,                "X509 Certificate")
HALVANE_WPS_PROPERTY(0x104D,     EAPIdentitity,                  Bytes,     0,      64, EAPIdentity,                    setEAPIdentity,                    "EAP Identity")
HALVANE_WPS_PROPERTY(0x104E,     MessageCounter,                 Bytes,     8,       8, messageCounter,                 setMessageCounter,                 "Message Counter")
HALVANE_WPS_PROPERTY(0x104F,     PublicKeyHash,                  Bytes,    20,      20, publicKeyHash,                  setPublicKeyHash,                  "Public Key Hash")
HALVANE_WPS_PROPERTY(0x1050,     RekeyKey,                       Bytes,    32,      32, rekeyKey,                       setRekeyKey,                       "Rekey Key")
HALVANE_WPS_PROPERTY(0x1051,     KeyLifetime,                    Integer,   4,       4, keyLifetime,                    setKeyLifetime,                    "Key Lifetime")
HALVANE_WPS_PROPERTY(0x1052,     PermittedConfigMethods,         Integer,   2,       2, permittedConfigMethods,         setPermittedConfigMethods,         "Permitted Config Methods")
HALVANE_WPS_PROPERTY(0x1053,     SelectedRegistrarConfigMethods, Integer,   2,       2, selectedRegistrarConfigMethods, setSelectedRegistrarConfigMethods, "Selected Registrar Config Methods")
HALVANE_WPS_PROPERTY(0x1054,     PrimaryDeviceType,              Devices,   8,       8, deviceTypes,                    setDeviceTypes,                    "Device Types")
HALVANE_WPS_PARSER_ONLY(0x1055, SecondaryDeviceTypeList,        Devices,   0,     128, deviceTypes)
HALVANE_WPS_PROPERTY(0x1056,     PortableDevice,                 Integer,   1,       1, portableDevice,                 setPortableDevice,                 "Portable Device")
HALVANE_WPS_PROPERTY(0x1057,     APSetupLocked,                  Integer,   1,       1, apSetupLocked,                  setApSetupLocked,                  "AP Setup Locked")
HALVANE_WPS_PROPERTY(0x1058,     ApplicationExtension,           Bytes,     0,     512, applicationExtension,           setApplicationExtension,           "Application Extension")
HALVANE_WPS_PROPERTY(0x1059,     EAPType,                        Bytes,     0,       8, EAPType,                        setEAPType,                        "EAP Type")
HALVANE_WPS_PROPERTY(0x1060,     InitializationVector,           Bytes,    32,      32, initializationVector,           setInitializationVector,           "Initialization Vector")
HALVANE_WPS_PROPERTY(0x1061,     KeyProvidedAutomatically,       Integer,   1,       1, keyProvidedAutomatically,       setKeyProvidedAutomatically,       "Key Provided Automatically")
HALVANE_WPS_PROPERTY(0x1062,     8021XEnabled,                   Integer,   1,       1, enabled8021X,                   setEnabled8021X,                   "Enabled 802.1X")
HALVANE_WPS_PROPERTY(0x1063,     AppSessionKey,                  Bytes,     0,     128, appSessionKey,                  setAppSessionKey,                  "App Session Key")
HALVANE_WPS_PROPERTY(0x1064,     WEPTransmitKey,                 Integer,   1,       1, wepTransmitKey,                 setWepTransmitKey,                 "WEP Transmit Key")
// clang-format on

#undef HALVANE_WPS_PROPERTY
#undef HALVANE_WPS_PARSER_ONLY
