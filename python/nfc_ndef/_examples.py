"""An example for each class of values, which becomes the end of its docstring."""

_EXAMPLES = {
    "AlternativeCarrier": """
        >>> AlternativeCarrier(cps=PowerState.ACTIVE, carrier_data_ref="0").carrier_data_ref
        '0'
    """,
    "AndroidApplication": """
        >>> Record(AndroidApplication("com.example.app")).payload
        b'com.example.app'
    """,
    "BluetoothLe": """
        >>> headset = BluetoothLe(device_address="01:02:03:04:05:06", address_type=AddressType.PUBLIC,
        ...                       le_role=LeRole.PERIPHERAL, local_name="Headset")
        >>> print(Record(headset))
        Bluetooth LE OOB "Headset"
    """,
    "BluetoothLeElement": """
        >>> BluetoothLeElement(b"\\x0a", data=b"\\xf6")
        BluetoothLeElement(b'\\n', data=b'\\xf6')
    """,
    "BluetoothLegacy": """
        >>> BluetoothLegacy(device_address="01:02:03:04:05:06", class_of_device="240404", pairing_type=0x10).local_name
        ''
    """,
    "BluetoothOob": """
        >>> speaker = BluetoothOob(device_address="01:02:03:04:05:06", class_of_device="240404",
        ...                        local_name="Speaker", local_name_type=LocalNameType.COMPLETE)
        >>> Record(speaker).type
        'application/vnd.bluetooth.ep.oob'
    """,
    "CollisionResolution": """
        >>> Record(CollisionResolution(0x1234)).payload
        b'\\x124'
    """,
    "DeviceInformation": """
        >>> DeviceInformation(vendor_name="Acme", model_name="One").replace(model_name="Two")
        DeviceInformation(vendor_name='Acme', model_name='Two')
    """,
    "DeviceInformationElement": """
        >>> DeviceInformationElement(b"\\xff", data=b"123").data
        b'123'
    """,
    "GenericControl": """
        >>> control = GenericControl(config=1, target_record=Record(type="t", payload=b"\\x01"), action_flag=1,
        ...                          action_code=9)
        >>> control.action_code
        9
    """,
    "HandoverCarrier": """
        >>> HandoverCarrier(TypeNameFormat.MEDIA, carrier_type="application/vnd.bluetooth.ep.oob").carrier_data
        b''
    """,
    "HandoverInitiate": """
        >>> Record(HandoverInitiate(version="1.5", ac_records=[AlternativeCarrier(cps=1, carrier_data_ref="0")])).type
        'Hi'
    """,
    "HandoverMediation": """
        >>> Record(HandoverMediation(version="1.5")).type
        'Hm'
    """,
    "HandoverRequest": """
        >>> request = HandoverRequest("1.2", cr_record=CollisionResolution(7),
        ...                           ac_records=[AlternativeCarrier(cps=1, carrier_data_ref="0")])
        >>> request.ac_records[0].content.cps
        PowerState.ACTIVE
    """,
    "HandoverSelect": """
        >>> select = HandoverSelect("1.2", ac_records=[AlternativeCarrier(cps=1, carrier_data_ref="0")])
        >>> len(encode([select, Record(type="application/vnd.bluetooth.ep.oob", payload=b"...", id="0")]))
        55
    """,
    "HandoverSelectError": """
        >>> HandoverSelectError(error_reason=1, error_data=255).error_data
        255
    """,
    "ManufacturerData": """
        >>> ManufacturerData(b"\\x34\\x12", data=b"\\x01").data
        b'\\x01'
    """,
    "OobDevicePassword": """
        >>> OobDevicePassword(public_key_hash=bytes(20), password_id=7).device_password
        b''
    """,
    "ServiceData": """
        >>> ServiceData("180F", data=b"d").uuid
        '180F'
    """,
    "ServiceParameter": """
        >>> ServiceParameter(service_name="urn:nfc:sn:handover", communication_mode=CommunicationMode.SINGLE_RESPONSE,
        ...                  minimum_waiting_time=8, maximum_waiting_time_extensions=15,
        ...                  maximum_message_size=1024).version
        '1.0'
    """,
    "ServiceSelect": """
        >>> Record(ServiceSelect(service_name="urn:nfc:sn:handover")).type
        'Ts'
    """,
    "SharingEnquiry": """
        >>> SharingEnquiry(version="1.0", enquiry_type=1, enquiry_data=b"AB").enquiry_data
        b'AB'
    """,
    "Signature": """
        >>> Signature(signature_type=SignatureType.ECDSA_P256, hash_type=HashType.SHA_256, signature=b"...",
        ...           certificate_format=CertificateFormat.X_509).hash_type
        HashType.SHA_256
    """,
    "SmartPoster": """
        >>> poster = SmartPoster(Uri("https://example.com"), titles=[Text("Hello", language="en")], action=0)
        >>> poster.uri_record.content.uri, poster.titles[0].content.text
        ('https://example.com', 'Hello')
    """,
    "Text": """
        >>> hello = Text("Hello", language="en")
        >>> encode(hello).hex()
        'd101085402656e48656c6c6f'
        >>> hello.replace(language="en-GB")
        Text('Hello', language='en-GB')
    """,
    "TnepStatus": """
        >>> TnepStatus(TnepStatusCode.SUCCESS)
        TnepStatus(TnepStatusCode.SUCCESS)
    """,
    "Uri": """
        >>> uri = Uri("https://example.com")
        >>> uri.uri, uri.identifier_code
        ('https://example.com', 4)
    """,
    "Wifi": """
        >>> network = Wifi(credentials=[WifiCredential(ssid="Guests", network_key="welcome to us",
        ...                                            authentication_type=AuthenticationType.WPA2_PERSONAL,
        ...                                            encryption_type=EncryptionType.AES)])
        >>> print(Record(network))
        Wi-Fi network "Guests"
    """,
    "WifiCredential": """
        >>> WifiCredential(ssid="Open to all", authentication_type=AuthenticationType.OPEN,
        ...                encryption_type=EncryptionType.NONE).network_key is None
        True
    """,
    "WifiCredentialElement": """
        >>> WifiCredentialElement(b"\\x10\\x0e", data=b"\\x01").data
        b'\\x01'
    """,
    "WifiElement": """
        >>> WifiElement(b"\\x10\\xfa", data=b"\\x01").id
        b'\\x10\\xfa'
    """,
    "WifiExtension": """
        >>> WifiExtension(b"\\x00\\x37\\x2a", version2="2.0").version2
        '2.0'
    """,
    "WifiExtensionElement": """
        >>> WifiExtensionElement(b"\\x06", data=b" ").data
        b' '
    """,
}


def add_to(module):
    import inspect

    for name, example in _EXAMPLES.items():
        cls = getattr(module, name)
        cls.__doc__ += "\n\n>>> from nfc_ndef import *\n" + inspect.cleandoc(example) + "\n"
